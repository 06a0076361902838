#pragma once
// TextRules: what may stand in a text box, and the two fields that hold to it.

#include <QLineEdit>
#include <QPlainTextEdit>

class QValidator;

namespace kv {

struct TextRules {
    bool code = false;  ///< upper case, no apostrophe
    QString allowed;    ///< empty: any character
    int most = 0;       ///< characters; 0: any number
    bool required = false;
    QString keep(const QString& text) const;
};

/// One line.
class LineField : public QLineEdit {
public:
    explicit LineField(QWidget* parent);
    TextRules rules;
    void showText(const QString& text);  ///< as it stands, without the rules
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QValidator* check_;
};

/// Several lines of free text.
class MemoField : public QPlainTextEdit {
public:
    MemoField(int rows, QWidget* parent);
    TextRules rules;
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    int roomLeft() const;
    int rows_;
};

}  // namespace kv
