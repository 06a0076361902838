#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <algorithm>

#include "platform/forms/FormImpl.h"

namespace kv {

namespace {

/// A combo box that can be locked: it shows its choice, takes the focus and changes by nothing.
class ChoiceField : public QComboBox {
public:
    explicit ChoiceField(QWidget* parent) : QComboBox(parent) { setFixedHeight(kField_px); }
    bool locked = false;
    void showPopup() override {
        if (!locked) QComboBox::showPopup();
    }
    QSize sizeHint() const override {
        return QSize(std::max(QComboBox::sizeHint().width(), charsWidth(this, 18)), kField_px);
    }
    QSize minimumSizeHint() const override { return QSize(charsWidth(this, 8), kField_px); }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool opens =
            event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier);
        if (locked)
            event->ignore();
        else if (opens)
            showPopup();
        else
            QComboBox::keyPressEvent(event);
    }
    void wheelEvent(QWheelEvent* event) override {
        if (locked)
            event->ignore();
        else
            QComboBox::wheelEvent(event);
    }
};

ChoiceField* faceOf(const ComboBox& box) { return static_cast<ChoiceField*>(box.widget()); }

}  // namespace

ComboBox::ComboBox(Form& owner, std::string name, bool editable) : Control(owner, std::move(name)) {
    auto* box = new ChoiceField(owner.widget());
    box->setEditable(editable);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setMaxVisibleItems(16);
    box->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (editable) box->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    adopt(box);
    const auto tell = [this] {
        changed();
        raise(onChange, "Change");
    };
    if (editable)
        QObject::connect(box, &QComboBox::editTextChanged, tell);
    else
        QObject::connect(box, &QComboBox::currentIndexChanged, tell);
}

std::string ComboBox::text() const { return toStd(faceOf(*this)->currentText()); }

void ComboBox::clear() { faceOf(*this)->clear(); }

/// The first entry does not become the choice by itself.
void ComboBox::addItem(std::string_view text, std::string_view key) {
    auto* box = faceOf(*this);
    const QSignalBlocker quiet(box);
    const int was = box->currentIndex();
    box->addItem(qs(text), qs(key));
    if (box->currentIndex() != was) box->setCurrentIndex(was);
    box->updateGeometry();
}

int ComboBox::count() const { return faceOf(*this)->count(); }

std::string ComboBox::item(int index) const { return toStd(faceOf(*this)->itemText(index)); }

int ComboBox::index() const { return faceOf(*this)->currentIndex(); }

void ComboBox::setIndex(int index) { faceOf(*this)->setCurrentIndex(index); }

std::string ComboBox::key() const { return toStd(faceOf(*this)->currentData().toString()); }

void ComboBox::setKey(std::string_view key) { faceOf(*this)->setCurrentIndex(faceOf(*this)->findData(qs(key))); }

void ComboBox::setText(std::string_view text) {
    auto* box = faceOf(*this);
    const int index = box->findText(qs(text));
    if (index >= 0 || !box->isEditable())
        box->setCurrentIndex(index);
    else
        box->setEditText(qs(text));
}

bool ComboBox::locked() const { return faceOf(*this)->locked; }

void ComboBox::setLocked(bool locked) {
    auto* box = faceOf(*this);
    box->locked = locked;
    if (box->lineEdit()) box->lineEdit()->setReadOnly(locked);
    box->setProperty("kvLocked", locked);
    box->update();
}

ComboBox& ComboBox::width(int chars) {
    constexpr int kPadding_px = 40;  // text margins and the arrow
    widget()->setFixedWidth(charsWidth(widget(), chars) + kPadding_px);
    widget()->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return *this;
}

}  // namespace kv
