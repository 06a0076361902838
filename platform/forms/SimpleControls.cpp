// Labels, buttons, checks, options, pictures, rich text and progress.

#include <QButtonGroup>
#include <QCheckBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QProgressBar>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTextBrowser>
#include <algorithm>

#include "platform/forms/FormImpl.h"
#include "platform/forms/Widgets.h"

namespace kv {

// ---- labels ----------------------------------------------------------------------------------------------------

LabelWidget::LabelWidget(const QString& text, QWidget* parent) : QLabel(text, parent) { setTextFormat(Qt::PlainText); }

void LabelWidget::applyRole() {
    if (alert_)
        setForegroundRole(QPalette::BrightText);
    else if (look_ == Label::Look::Hint)
        setForegroundRole(QPalette::PlaceholderText);
    else
        setForegroundRole(QPalette::WindowText);
}

void LabelWidget::setAlert(bool alert) {
    alert_ = alert;
    applyRole();
}

void LabelWidget::setLook(Label::Look look) {
    look_ = look;
    QFont face = font();
    if (look == Label::Look::Heading) {
        face.setPointSizeF(face.pointSizeF() * 1.45);
        face.setWeight(QFont::DemiBold);
    }
    if (look == Label::Look::FigureBold) face.setWeight(QFont::Bold);
    if (look == Label::Look::Hint) face.setPointSizeF(face.pointSizeF() * 0.95);
    setFont(face);
    if (look == Label::Look::Figure || look == Label::Look::FigureBold) setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (look == Label::Look::Box) {
        setContentsMargins(9, 0, 9, 0);
        setFixedHeight(kField_px);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    applyRole();
}

QSize LabelWidget::sizeHint() const {
    QSize hint = QLabel::sizeHint();
    if (look_ == Label::Look::Figure || look_ == Label::Look::FigureBold)
        hint.setWidth(std::max(hint.width(), charsWidth(this, 14)));
    return hint;
}

QSize LabelWidget::minimumSizeHint() const {
    QSize hint = QLabel::minimumSizeHint();
    if (!buddy()) hint.setWidth(std::min(hint.width(), charsWidth(this, 10)));
    return hint;
}

void LabelWidget::paintEvent(QPaintEvent* event) {
    if (look_ == Label::Look::Box) {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(tones().border);
        painter.setBrush(tones().locked);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
    const QRect room = contentsRect();
    const bool figure = look_ == Label::Look::Figure || look_ == Label::Look::FigureBold;
    const QString shortened =
        figure ? fitted(fontMetrics(), text(), room.width() + 1, true)
               : fontMetrics().elidedText(text(), Qt::ElideRight, room.width() + 1, Qt::TextShowMnemonic);
    if (pixmap(Qt::ReturnByValue).isNull() && !wordWrap() && !text().contains(u'\n') && shortened != text()) {
        QPainter painter(this);
        style()->drawItemText(&painter, room, static_cast<int>(alignment()) | Qt::TextShowMnemonic, palette(),
                              isEnabled(), shortened, foregroundRole());
        return;
    }
    QLabel::paintEvent(event);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
Label::Label(Form& owner, std::string name, std::string caption) : Control(owner, std::move(name)) {
    adopt(new LabelWidget(qs(caption), owner.widget()));
}

namespace {
LabelWidget* faceOf(const Label& label) { return static_cast<LabelWidget*>(label.widget()); }
}  // namespace

std::string Label::text() const { return toStd(faceOf(*this)->text()); }

void Label::setText(std::string_view text) { faceOf(*this)->setText(qs(text)); }

void Label::setAlign(Align align) {
    const auto side = align == Align::Right    ? Qt::AlignRight
                      : align == Align::Center ? Qt::AlignHCenter
                                               : Qt::AlignLeft;
    faceOf(*this)->setAlignment(side | Qt::AlignVCenter);
}

Label& Label::look(Look look) {
    faceOf(*this)->setLook(look);
    return *this;
}

Label& Label::wrap(int lines) {
    auto* label = static_cast<LabelWidget*>(widget());
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setMinimumHeight(lines * label->fontMetrics().lineSpacing());
    return *this;
}

void Label::setAlert(bool alert) { faceOf(*this)->setAlert(alert); }

// ---- buttons ---------------------------------------------------------------------------------------------------

namespace {
constexpr int kLargeIcon_px = 32;
constexpr QSize kLarge(112, 84);
constexpr int kLargeNarrow_px = 84;
}  // namespace

ButtonWidget::ButtonWidget(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setIconSize(QSize(16, 16));
    setAutoDefault(false);
}

void ButtonWidget::setKind(Kind kind) {
    kind_ = kind;
    if (kind == Kind::Narrow) setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (kind == Kind::Large) {
        setIconSize(QSize(kLargeIcon_px, kLargeIcon_px));
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }
    setProperty("kvPrimary", kind == Kind::Primary);
    setProperty("kvLarge", kind == Kind::Large);
    updateGeometry();
}

QSize ButtonWidget::sizeHint() const {
    if (kind_ == Kind::Narrow) {
        const int words = fontMetrics().horizontalAdvance(QString(text()).remove(u'&'));
        return QSize(std::max(kField_px, words + 16), kField_px);
    }
    if (kind_ != Kind::Large) return QPushButton::sizeHint();
    const QRect words = fontMetrics().boundingRect(QRect(0, 0, kLarge.width() - 12, 200),
                                                   Qt::AlignHCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, text());
    return QSize(std::max(kLarge.width(), words.width() + 12),
                 std::max(kLarge.height(), kLargeIcon_px + words.height() + 26));
}

QSize ButtonWidget::minimumSizeHint() const {
    const QSize hint = sizeHint();
    if (kind_ != Kind::Large) return hint;
    int wide = kLargeNarrow_px;
    for (const QString& word : QString(text()).remove(u'&').split(u'\n'))
        wide = std::max(wide, fontMetrics().horizontalAdvance(word) + 12);
    return QSize(wide, hint.height());
}

void ButtonWidget::paintEvent(QPaintEvent* event) {
    if (kind_ != Kind::Large) return QPushButton::paintEvent(event);
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    style()->drawPrimitive(QStyle::PE_PanelButtonCommand, &option, &painter, this);
    const int shift = isDown() ? 1 : 0;
    const QRect picture((width() - kLargeIcon_px) / 2, 12 + shift, kLargeIcon_px, kLargeIcon_px);
    icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled, QIcon::On);
    const QRect room = rect().adjusted(6, kLargeIcon_px + 16 + shift, -6, -6 + shift);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic, text());
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
CommandButton::CommandButton(Form& owner, std::string name, std::string caption, std::string icon)
    : Control(owner, std::move(name)) {
    auto* button = new ButtonWidget(qs(caption), owner.widget());
    adopt(button);
    if (!icon.empty()) button->setIcon(iconOf(icon));
    QObject::connect(button, &QPushButton::clicked, [this] { raise(onClick, "Click"); });
}

namespace {
ButtonWidget* faceOf(const CommandButton& button) { return static_cast<ButtonWidget*>(button.widget()); }
}  // namespace

bool isPrimary(const CommandButton& button) { return faceOf(button)->kind() == ButtonWidget::Kind::Primary; }

bool isCancel(const CommandButton& button) { return faceOf(button)->cancels; }

std::string CommandButton::text() const { return toStd(faceOf(*this)->text()); }

void CommandButton::setCaption(std::string_view caption) {
    faceOf(*this)->setText(qs(caption));
    faceOf(*this)->updateGeometry();
}

void CommandButton::setIcon(std::string_view icon) { faceOf(*this)->setIcon(iconOf(icon)); }

CommandButton& CommandButton::large() {
    faceOf(*this)->setKind(ButtonWidget::Kind::Large);
    return *this;
}

CommandButton& CommandButton::primary() {
    faceOf(*this)->setKind(ButtonWidget::Kind::Primary);
    return *this;
}

CommandButton& CommandButton::cancels() {
    faceOf(*this)->cancels = true;
    setCausesValidation(false);
    return *this;
}

CommandButton& CommandButton::narrow() {
    faceOf(*this)->setKind(ButtonWidget::Kind::Narrow);
    return *this;
}

CommandButton& CommandButton::skipsTab() {
    faceOf(*this)->setFocusPolicy(Qt::ClickFocus);
    return *this;
}

void CommandButton::press() {
    if (enabled()) raise(onClick, "Click");
}

// ---- checks and options ----------------------------------------------------------------------------------------

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
CheckBox::CheckBox(Form& owner, std::string name, std::string caption) : Control(owner, std::move(name)) {
    auto* box = new QCheckBox(qs(caption), owner.widget());
    box->setMinimumHeight(kField_px - 4);
    adopt(box);
    QObject::connect(box, &QCheckBox::clicked, [this] {
        changed();
        raise(onClick, "Click");
    });
}

std::string CheckBox::text() const { return toStd(static_cast<QCheckBox*>(widget())->text()); }

bool CheckBox::checked() const { return static_cast<QCheckBox*>(widget())->isChecked(); }

void CheckBox::setChecked(bool checked) { static_cast<QCheckBox*>(widget())->setChecked(checked); }

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
OptionButton::OptionButton(Form& owner, std::string name, std::string caption, std::string group)
    : Control(owner, std::move(name)) {
    auto* option = new QRadioButton(qs(caption), owner.widget());
    option->setMinimumHeight(kField_px - 4);
    adopt(option);
    QButtonGroup*& mates = owner.impl().groups[group];
    if (!mates) mates = new QButtonGroup(owner.widget());
    mates->addButton(option);
    QObject::connect(option, &QRadioButton::clicked, [this] {
        changed();
        raise(onClick, "Click");
    });
}

std::string OptionButton::text() const { return toStd(static_cast<QRadioButton*>(widget())->text()); }

bool OptionButton::chosen() const { return static_cast<QRadioButton*>(widget())->isChecked(); }

void OptionButton::choose() { static_cast<QRadioButton*>(widget())->setChecked(true); }

// ---- pictures, rich text, progress -----------------------------------------------------------------------------

// NOLINTNEXTLINE(performance-unnecessary-value-param): controls take their texts by value
Image::Image(Form& owner, std::string name, std::string icon, int size_px) : Control(owner, std::move(name)) {
    auto* label = new QLabel(owner.widget());
    label->setAlignment(Qt::AlignCenter);
    adopt(label);
    if (!icon.empty()) setIcon(icon, size_px);
}

void Image::setFile(const std::string& path) { static_cast<QLabel*>(widget())->setPixmap(QPixmap(qs(path))); }

void Image::setIcon(const std::string& icon, int size_px) {
    auto* label = static_cast<QLabel*>(widget());
    const auto draw = [label, icon, size_px] {
        label->setPixmap(iconOf(icon).pixmap(QSize(size_px, size_px), label->devicePixelRatioF()));
    };
    draw();
    onThemeChanged(label, draw);
}

RichText::RichText(Form& owner, std::string name, bool readOnly) : Control(owner, std::move(name)) {
    auto* text = new QTextBrowser(owner.widget());
    text->setReadOnly(readOnly);
    text->setOpenLinks(false);
    text->setTabChangesFocus(true);
    text->document()->setDocumentMargin(10);
    setOwnEnter(text);
    adopt(text);
}

std::string RichText::text() const { return toStd(static_cast<QTextBrowser*>(widget())->toPlainText()); }

void RichText::setText(std::string_view text) { static_cast<QTextBrowser*>(widget())->setPlainText(qs(text)); }

void RichText::setHtml(std::string_view html) { static_cast<QTextBrowser*>(widget())->setHtml(qs(html)); }

ProgressBar::ProgressBar(Form& owner, std::string name) : Control(owner, std::move(name)) {
    auto* bar = new QProgressBar(owner.widget());
    bar->setTextVisible(false);
    bar->setRange(0, 100);
    bar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    adopt(bar);
}

std::string ProgressBar::text() const {
    const auto* bar = static_cast<QProgressBar*>(widget());
    const int most = std::max(1, bar->maximum());
    return std::to_string(std::max(0, bar->value()) * 100LL / most);
}

void ProgressBar::setRange(int most) {
    auto* bar = static_cast<QProgressBar*>(widget());
    bar->setRange(0, std::max(1, most));
    bar->setValue(0);
}

/// A modal form also gets its input then, so that its Cancel button can stop the work.
void ProgressBar::setValue(int value) {
    constexpr qint64 kBreath_ms = 40;
    static QElapsedTimer last;
    auto* bar = static_cast<QProgressBar*>(widget());
    bar->setValue(std::min(value, bar->maximum()));
    if (last.isValid() && last.elapsed() < kBreath_ms && value < bar->maximum()) return;
    const bool input = form().impl().modal && Form::active() == &form();
    QCoreApplication::processEvents(input ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    last.start();
}

}  // namespace kv
