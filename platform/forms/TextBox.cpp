// Text boxes: one line or several, with rules of typing that hold on every way in but not for text set by code.

#include <QApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QValidator>
#include <algorithm>

#include "platform/forms/FormImpl.h"
#include "platform/forms/TextRules.h"

namespace kv {

// ---- rules -----------------------------------------------------------------------------------------------------

QString TextRules::keep(const QString& text) const {
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : code ? text.toUpper() : text) {
        if (code && c == u'\'') continue;
        if (!allowed.isEmpty() && !allowed.contains(c)) continue;
        kept += c;
    }
    return kept;
}

namespace {

/// Brings the rules to what paste, drop and input methods put in. Keys have been through them before.
class RuleValidator : public QValidator {
public:
    RuleValidator(const TextRules& rules, QObject* parent) : QValidator(parent), rules_(rules) {}
    State validate(QString& text, int& cursor) const override {
        const QString before = rules_.keep(text.left(cursor));
        text = before + rules_.keep(text.mid(cursor));
        cursor = static_cast<int>(before.size());
        if (rules_.most > 0 && text.size() > rules_.most) {
            const int over = std::min(static_cast<int>(text.size()) - rules_.most, cursor);
            text.remove(cursor - over, over);
            cursor -= over;
            text.truncate(rules_.most);
        }
        return Acceptable;
    }

private:
    const TextRules& rules_;
};

}  // namespace

// ---- one line --------------------------------------------------------------------------------------------------

LineField::LineField(QWidget* parent) : QLineEdit(parent), check_(new RuleValidator(rules, this)) {
    setFixedHeight(kField_px);
    setValidator(check_);
}

void LineField::showText(const QString& text) {
    if (text == this->text()) return;
    setValidator(nullptr);
    setText(text);
    setCursorPosition(0);
    setValidator(check_);
}

void LineField::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    const bool printable =
        !typed.isEmpty() && typed.front().isPrint() && !(event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier));
    if (!printable || isReadOnly()) return QLineEdit::keyPressEvent(event);
    const QString kept = rules.keep(typed);
    const bool full = rules.most > 0 && text().size() - selectedText().size() >= rules.most;
    if (kept.isEmpty() || full) {
        event->accept();
        return;
    }
    if (kept == typed) return QLineEdit::keyPressEvent(event);
    QKeyEvent changed(event->type(), event->key(), event->modifiers(), kept);
    QLineEdit::keyPressEvent(&changed);
}

void LineField::inputMethodEvent(QInputMethodEvent* event) {
    if (!isReadOnly()) QLineEdit::inputMethodEvent(event);
}

void LineField::dropEvent(QDropEvent* event) {
    if (!isReadOnly()) QLineEdit::dropEvent(event);
}

QSize LineField::sizeHint() const { return QSize(charsWidth(this, 18), kField_px); }

QSize LineField::minimumSizeHint() const { return QSize(charsWidth(this, 5), kField_px); }

// ---- several lines ---------------------------------------------------------------------------------------------

MemoField::MemoField(int rows, QWidget* parent) : QPlainTextEdit(parent), rows_(rows) {
    setTabChangesFocus(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    document()->setDocumentMargin(6);
    setMinimumHeight(sizeHint().height());
    setOwnEnter(this);
}

QSize MemoField::sizeHint() const {
    return QSize(charsWidth(this, 30), fontMetrics().lineSpacing() * std::max(2, rows_) + 16);
}

/// Enter moves on here too; with Ctrl or Shift it starts a new line.
void MemoField::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !(event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier))) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
        QCoreApplication::sendEvent(this, &tab);
        return;
    }
    if (enter && !isReadOnly()) {
        insertPlainText(QStringLiteral("\n"));
        return;
    }
    const QString typed = event->text();
    const bool plain = !typed.isEmpty() && typed.front().isPrint() && !(event->modifiers() & Qt::ControlModifier);
    if (!plain || isReadOnly()) return QPlainTextEdit::keyPressEvent(event);
    const QString kept = rules.keep(typed);
    if (kept.isEmpty() || roomLeft() <= 0) return event->accept();
    QKeyEvent changed(event->type(), event->key(), event->modifiers(), kept);
    QPlainTextEdit::keyPressEvent(&changed);
}

int MemoField::roomLeft() const {
    if (rules.most <= 0) return 1 << 20;
    return rules.most - static_cast<int>(toPlainText().size()) + static_cast<int>(textCursor().selectedText().size());
}

void MemoField::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) insertPlainText(rules.keep(source->text()).left(roomLeft()));
}

void MemoField::inputMethodEvent(QInputMethodEvent* event) {
    if (isReadOnly()) return;
    QInputMethodEvent changed(event->preeditString(), event->attributes());
    changed.setCommitString(rules.keep(event->commitString()).left(std::max(0, roomLeft())), event->replacementStart(),
                            event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&changed);
}

// ---- the control -----------------------------------------------------------------------------------------------

namespace {

LineField* lineOf(const TextBox& box) { return dynamic_cast<LineField*>(box.widget()); }
MemoField* memoOf(const TextBox& box) { return dynamic_cast<MemoField*>(box.widget()); }
TextRules& rulesOf(const TextBox& box) {
    if (auto* line = lineOf(box)) return line->rules;
    return memoOf(box)->rules;
}

}  // namespace

TextBox::TextBox(Form& owner, std::string name) : Control(owner, std::move(name)) {
    auto* line = new LineField(owner.widget());
    adopt(line);
    QObject::connect(line, &QLineEdit::textChanged, [this] {
        changed();
        raise(onChange, "Change");
    });
}

std::string TextBox::text() const {
    if (const auto* line = lineOf(*this)) return toStd(line->text());
    return toStd(memoOf(*this)->toPlainText());
}

void TextBox::setText(std::string_view text) {
    if (auto* line = lineOf(*this)) return line->showText(qs(text));
    if (auto* memo = memoOf(*this); memo->toPlainText() != qs(text)) memo->setPlainText(qs(text));
}

bool TextBox::locked() const {
    if (const auto* line = lineOf(*this)) return line->isReadOnly();
    return memoOf(*this)->isReadOnly();
}

void TextBox::setLocked(bool locked) {
    if (auto* line = lineOf(*this))
        line->setReadOnly(locked);
    else
        memoOf(*this)->setReadOnly(locked);
    widget()->setProperty("kvLocked", locked);
    widget()->update();
}

bool TextBox::isRequired() const { return rulesOf(*this).required; }

void TextBox::selectAll() {
    if (auto* line = lineOf(*this))
        line->selectAll();
    else
        memoOf(*this)->selectAll();
}

TextBox& TextBox::code() {
    rulesOf(*this).code = true;
    return *this;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
TextBox& TextBox::chars(std::string allowed) {
    rulesOf(*this).allowed = qs(allowed);
    return *this;
}

TextBox& TextBox::maxLength(int chars) {
    rulesOf(*this).most = chars;
    return *this;
}

TextBox& TextBox::width(int chars) {
    constexpr int kPadding_px = 22;
    widget()->setFixedWidth(charsWidth(widget(), chars) + kPadding_px);
    widget()->setSizePolicy(QSizePolicy::Fixed, widget()->sizePolicy().verticalPolicy());
    return *this;
}

TextBox& TextBox::password() {
    if (auto* line = lineOf(*this)) line->setEchoMode(QLineEdit::Password);
    return *this;
}

TextBox& TextBox::lines(int rows) {
    const TextRules rules = rulesOf(*this);
    auto* memo = new MemoField(rows, form().widget());
    memo->rules = rules;
    adopt(memo);
    QObject::connect(memo, &QPlainTextEdit::textChanged, [this] {
        changed();
        raise(onChange, "Change");
    });
    return *this;
}

TextBox& TextBox::align(Align align) {
    const auto side = align == Align::Right    ? Qt::AlignRight
                      : align == Align::Center ? Qt::AlignHCenter
                                               : Qt::AlignLeft;
    if (auto* line = lineOf(*this)) line->setAlignment(side | Qt::AlignVCenter);
    return *this;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
TextBox& TextBox::placeholder(std::string text) {
    if (auto* line = lineOf(*this))
        line->setPlaceholderText(qs(text));
    else
        memoOf(*this)->setPlaceholderText(qs(text));
    return *this;
}

TextBox& TextBox::required() {
    rulesOf(*this).required = true;
    return *this;
}

}  // namespace kv
