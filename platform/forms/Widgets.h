#pragma once
// Widgets: the toolkit classes behind the simple controls, with what our style draws beside the toolkit's own parts.

#include <QLabel>
#include <QPushButton>

#include "platform/forms/Control.h"

namespace kv {

/// A label that shortens its text with an ellipsis where there is no room, and can look like a read-only field.
class LabelWidget : public QLabel {
public:
    LabelWidget(const QString& text, QWidget* parent);
    void setLook(Label::Look look);
    void setAlert(bool alert);
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyRole();
    Label::Look look_ = Label::Look::Plain;
    bool alert_ = false;
};

/// A push button that may be the filled one of its form, a narrow one beside a field, or a large one of a shell.
class ButtonWidget : public QPushButton {
public:
    enum class Kind { Plain, Primary, Narrow, Large };
    ButtonWidget(const QString& text, QWidget* parent);
    Kind kind() const { return kind_; }
    void setKind(Kind kind);
    bool cancels = false;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;  ///< a large one gives way on a narrow screen

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind kind_ = Kind::Plain;
};

}  // namespace kv
