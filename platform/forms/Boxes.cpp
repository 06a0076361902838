// Message and input boxes as windows of our own.

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "platform/forms/FormImpl.h"
#include "platform/forms/TextRules.h"
#include "platform/forms/Widgets.h"

namespace kv {

namespace {

constexpr int kPicture_px = 40;
constexpr int kText_px = 420;

struct AnswerButton {
    Answer answer;
    const char* caption;
};

std::vector<AnswerButton> buttonsOf(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            return {{Answer::Ok, "&OK"}};
        case Buttons::OkCancel:
            return {{Answer::Ok, "&OK"}, {Answer::Cancel, "&Cancel"}};
        case Buttons::YesNo:
            return {{Answer::Yes, "&Yes"}, {Answer::No, "&No"}};
        case Buttons::YesNoCancel:
            return {{Answer::Yes, "&Yes"}, {Answer::No, "&No"}, {Answer::Cancel, "&Cancel"}};
        case Buttons::RetryCancel:
            return {{Answer::Retry, "&Retry"}, {Answer::Cancel, "&Cancel"}};
    }
    return {};
}

/// The sign of a box: a soft disc in the colour of the matter with its character.
class Sign : public QWidget {
public:
    Sign(Icon icon, QWidget* parent) : QWidget(parent), icon_(icon) { setFixedSize(kPicture_px, kPicture_px); }

protected:
    void paintEvent(QPaintEvent*) override {
        const Tones& t = tones();
        const QColor amber(t.dark ? "#f0b252" : "#b26a00");
        const QColor colour = icon_ == Icon::Stop ? t.danger : icon_ == Icon::Exclamation ? amber : t.accent;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor soft = colour;
        soft.setAlphaF(t.dark ? 0.22F : 0.13F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(soft);
        painter.drawEllipse(rect());
        painter.setPen(QPen(colour, 2.6, Qt::SolidLine, Qt::RoundCap));
        const QPointF c = QRectF(rect()).center();
        if (icon_ == Icon::Stop) {
            painter.drawLine(c + QPointF(-6, -6), c + QPointF(6, 6));
            painter.drawLine(c + QPointF(6, -6), c + QPointF(-6, 6));
            return;
        }
        if (icon_ == Icon::Question) {
            QFont font = painter.font();
            font.setPixelSize(24);
            font.setWeight(QFont::DemiBold);
            painter.setFont(font);
            painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("?"));
            return;
        }
        const qreal up = icon_ == Icon::Exclamation ? 1 : -1;
        painter.drawLine(c + QPointF(0, -8 * up), c + QPointF(0, 2.5 * up));
        painter.setBrush(colour);
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(c + QPointF(0, 8 * up), 1.9, 1.9);
    }

private:
    Icon icon_;
};

QWidget* frontWindow() {
    QWidget* front = QApplication::activeModalWidget();
    if (!front) front = QApplication::activeWindow();
    if (!front && Form::shell()) front = Form::shell()->widget();
    return front && front->isVisible() ? front : nullptr;
}

void showOver(QWidget& window, QWidget* owner) {
    window.setWindowModality(Qt::ApplicationModal);
    window.adjustSize();
    if (owner) {
        const QPoint middle = owner->mapToGlobal(owner->rect().center());
        window.move(middle - QPoint(window.width() / 2, window.height() / 2));
    }
    window.show();
    window.activateWindow();
}

}  // namespace

// ---- message box -----------------------------------------------------------------------------------------------

BoxWindow::BoxWindow(const MessageBox& box, QWidget* owner) : QWidget(owner, Qt::Dialog), box_(box) {
    setWindowTitle(qs(box.title));
    setObjectName(QStringLiteral("message"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 22, 16, 16);
    column->setSpacing(18);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* upper = new QHBoxLayout;
    upper->setSpacing(16);
    column->addLayout(upper);
    if (box.icon != Icon::None) upper->addWidget(new Sign(box.icon, this), 0, Qt::AlignTop);
    auto* text = new QLabel(qs(box.text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")), this);
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setFocusPolicy(Qt::NoFocus);
    const int natural = text->sizeHint().width();
    text->setWordWrap(natural > kText_px);
    text->setMinimumWidth(std::min(std::max(natural, 230), kText_px));
    text->setMinimumHeight(kPicture_px);
    text->setContentsMargins(0, 0, 8, 0);
    upper->addWidget(text, 1, Qt::AlignVCenter);
    auto* lower = new QHBoxLayout;
    lower->setSpacing(kGap_px);
    lower->addStretch(1);
    column->addLayout(lower);
    for (const auto& [answer, caption] : buttonsOf(box.buttons)) {
        auto* button = new ButtonWidget(QString::fromLatin1(caption), this);
        button->setMinimumWidth(92);
        QObject::connect(button, &QPushButton::clicked, [this, chosen = answer] { take(chosen); });
        lower->addWidget(button);
        buttons_.emplace_back(answer, button);
    }
    auto* first = static_cast<ButtonWidget*>(button(defaultAnswer()));
    first->setKind(ButtonWidget::Kind::Primary);
    first->setFocus();
}

QPushButton* BoxWindow::button(Answer answer) const {
    for (const auto& [one, button] : buttons_)
        if (one == answer) return button;
    return nullptr;
}

Answer BoxWindow::defaultAnswer() const {
    if (box_.defaultAnswer && button(*box_.defaultAnswer)) return *box_.defaultAnswer;
    return buttons_.front().first;
}

Answer BoxWindow::escapeAnswer() const { return buttons_.back().first; }

void BoxWindow::take(Answer answer) {
    if (answer_) return;
    answer_ = answer;
    hide();
    if (onAnswered) onAnswered();
}

void BoxWindow::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const auto isFocus = [](const auto& one) { return one.second->hasFocus(); };
    if (key == Qt::Key_Escape) return take(escapeAnswer());
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        const auto it = std::find_if(buttons_.begin(), buttons_.end(), isFocus);
        return take(it == buttons_.end() ? defaultAnswer() : it->first);
    }
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const auto at = std::find_if(buttons_.begin(), buttons_.end(), isFocus) - buttons_.begin();
        const auto next = std::clamp<std::ptrdiff_t>(at + (key == Qt::Key_Left ? -1 : 1), 0, std::ssize(buttons_) - 1);
        return buttons_[static_cast<std::size_t>(next)].second->setFocus();
    }
    // the letter of a button alone is enough, as no text is typed here
    for (const auto& [answer, face] : buttons_)
        if (!event->text().isEmpty() &&
            QKeySequence::mnemonic(face->text()) == QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)))
            return take(answer);
    QWidget::keyPressEvent(event);
}

void BoxWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    take(escapeAnswer());
}

std::unique_ptr<BoxWindow> openBox(const MessageBox& box) {
    QWidget* owner = frontWindow();
    auto window = std::make_unique<BoxWindow>(box, owner);
    showOver(*window, owner);
    window->button(window->defaultAnswer())->setFocus();
    return window;
}

// ---- input box -------------------------------------------------------------------------------------------------

InputWindow::InputWindow(std::string_view prompt, std::string_view title, std::string_view proposed, QWidget* owner)
    : QWidget(owner, Qt::Dialog), prompt_(prompt) {
    setWindowTitle(qs(title));
    setObjectName(QStringLiteral("input"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin_px + 4, kMargin_px + 4, kMargin_px, kMargin_px);
    column->setSpacing(kGap_px);
    auto* label = new QLabel(qs(prompt), this);
    label->setWordWrap(true);
    label->setMinimumWidth(380);
    column->addWidget(label);
    auto* line = new LineField(this);
    line->showText(qs(proposed));
    line->selectAll();
    field_ = line;
    column->addWidget(field_);
    column->addSpacing(kGap_px);
    auto* lower = new QHBoxLayout;
    lower->setSpacing(kGap_px);
    lower->addStretch(1);
    column->addLayout(lower);
    auto* ok = new ButtonWidget(QStringLiteral("&OK"), this);
    ok->setKind(ButtonWidget::Kind::Primary);
    auto* no = new ButtonWidget(QStringLiteral("&Cancel"), this);
    for (auto* button : {ok, no}) {
        button->setMinimumWidth(92);
        lower->addWidget(button);
    }
    QObject::connect(ok, &QPushButton::clicked, [this] { accept(); });
    QObject::connect(no, &QPushButton::clicked, [this] { cancel(); });
}

void InputWindow::accept() {
    if (std::exchange(done_, true)) return;
    result_ = toStd(field_->text());
    hide();
    if (onDone) onDone();
}

void InputWindow::cancel() {
    if (std::exchange(done_, true)) return;
    hide();
    if (onDone) onDone();
}

void InputWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return cancel();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return accept();
    QWidget::keyPressEvent(event);
}

void InputWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    cancel();
}

std::unique_ptr<InputWindow> openInput(std::string_view prompt, std::string_view title, std::string_view proposed) {
    QWidget* owner = frontWindow();
    auto window = std::make_unique<InputWindow>(prompt, title, proposed, owner);
    showOver(*window, owner);
    window->field()->setFocus();
    return window;
}

// ---- the window before -----------------------------------------------------------------------------------------

Reactivate::Reactivate() : was_(QApplication::activeWindow()) {}

Reactivate::~Reactivate() {
    if (was_ && was_->isVisible()) was_->activateWindow();
}

}  // namespace kv
