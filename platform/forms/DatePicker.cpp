// Date fields: typed in the short form or picked from a calendar that F4 or Alt+Down opens.

#include <QCalendarWidget>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QTextCharFormat>
#include <QToolButton>

#include "platform/forms/DateTyping.h"
#include "platform/forms/FormImpl.h"
#include "platform/forms/TextRules.h"

namespace kv {

namespace {

constexpr int kButton_px = 26;

/// The twelve months of a year to choose from.
class MonthSheet : public QWidget {
public:
    MonthSheet(const Date& shown, std::function<void(const Date&)> chosen, QWidget* parent)
        : QWidget(parent), year_(shown.year()), current_(shown), chosen_(std::move(chosen)) {
        auto* grid = new QGridLayout(this);
        grid->setContentsMargins(10, 10, 10, 10);
        grid->setSpacing(4);
        title_ = new QLabel(this);
        title_->setAlignment(Qt::AlignCenter);
        auto* back = arrow(QStringLiteral("go-previous"), -1);
        auto* on = arrow(QStringLiteral("go-next"), 1);
        grid->addWidget(back, 0, 0);
        grid->addWidget(title_, 0, 1);
        grid->addWidget(on, 0, 2);
        for (int month = 1; month <= 12; ++month) {
            auto* button = new QToolButton(this);
            button->setText(qs(Format(Date(2000, month, 1), "MMM")));
            button->setFixedSize(64, 30);
            button->setCheckable(true);
            QObject::connect(button, &QToolButton::clicked, [this, month] { chosen_(Date(year_, month, 1)); });
            grid->addWidget(button, 1 + (month - 1) / 3, (month - 1) % 3);
            months_.push_back(button);
        }
        showYear();
    }

private:
    QToolButton* arrow(const QString& icon, int step) {
        auto* button = new QToolButton(this);
        button->setIcon(iconOf(toStd(icon)));
        button->setAutoRaise(true);
        QObject::connect(button, &QToolButton::clicked, [this, step] {
            year_ += step;
            showYear();
        });
        return button;
    }
    void showYear() {
        title_->setText(QString::number(year_));
        for (int i = 0; i < 12; ++i)
            months_[static_cast<std::size_t>(i)]->setChecked(year_ == current_.year() && i + 1 == current_.month());
    }

    int year_;
    Date current_;
    std::function<void(const Date&)> chosen_;
    QLabel* title_ = nullptr;
    std::vector<QToolButton*> months_;
};

/// The toolkit's calendar in our colours and with our arrows.
void dressCalendar(QCalendarWidget& calendar) {
    QTextCharFormat weekend;
    weekend.setForeground(tones().accent);
    calendar.setWeekdayTextFormat(Qt::Saturday, weekend);
    calendar.setWeekdayTextFormat(Qt::Sunday, weekend);
    if (auto* bar = calendar.findChild<QWidget*>(QStringLiteral("qt_calendar_navigationbar")))
        bar->setBackgroundRole(QPalette::Base);
    for (QToolButton* button : calendar.findChildren<QToolButton*>()) {
        if (button->objectName() == QLatin1String("qt_calendar_prevmonth")) button->setIcon(iconOf("go-previous"));
        if (button->objectName() == QLatin1String("qt_calendar_nextmonth")) button->setIcon(iconOf("go-next"));
        QPalette palette = button->palette();
        palette.setColor(QPalette::ButtonText, palette.color(QPalette::WindowText));
        button->setPalette(palette);
    }
}

}  // namespace

/// The field of a date picker.
class DateField : public QLineEdit, public Leavable {
public:
    DateField(std::string format, QWidget* parent);
    const Date& value() const { return value_; }
    void setValue(const Date& date);
    bool canLeave() override;
    bool isEdited() const { return text() != shown(); }
    QString shown() const { return qs(Format(value_, format_)); }
    QSize sizeHint() const override {
        return QSize(
            fontMetrics().horizontalAdvance(month_ ? QStringLiteral("September 2024") : QStringLiteral("00/00/0000")) +
                kButton_px + 24,
            kField_px);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }
    std::function<void()> onChanged;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    bool step(QKeyEvent* event);
    void stepTo(const Date& date);
    void openCalendar();
    QRect buttonRect() const { return QRect(width() - kButton_px - 1, 1, kButton_px, height() - 2); }

    std::string format_;
    bool month_;
    Date value_;
};

DateField::DateField(std::string format, QWidget* parent)
    : QLineEdit(parent), format_(std::move(format)), month_(isMonthFormat(format_)), value_(Today()) {
    if (month_) value_ = Date(value_.year(), value_.month(), 1);
    setFixedHeight(kField_px);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFixedWidth(sizeHint().width());
    setTextMargins(0, 0, kButton_px, 0);
    setMaxLength(40);
    setText(shown());
    setMouseTracking(true);
}

void DateField::setValue(const Date& date) {
    const bool other = date != value_;
    value_ = date;
    if (text() != shown()) setText(shown());
    if (other && onChanged) onChanged();
}

bool DateField::canLeave() {
    if (!isEdited() || isReadOnly()) return true;
    const auto read = month_ ? readTypedMonth(toStd(text()), value_) : readTypedDay(toStd(text()), value_);
    if (!read) {
        MsgBox("Invalid date!", Icon::Exclamation);
        setFocus(Qt::TabFocusReason);
        selectAll();
        return false;
    }
    setValue(*read);
    setText(shown());
    return true;
}

void DateField::stepTo(const Date& date) {
    setValue(date);
    selectAll();
}

/// Keys that move the date while nothing is being typed. True when the event was one.
bool DateField::step(QKeyEvent* event) {
    if (isReadOnly() || (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier))) return false;
    const auto by = [this](int count) { return month_ ? value_.addMonths(count) : value_.addDays(count); };
    switch (event->key()) {
        case Qt::Key_Up:
            return canLeave() ? (stepTo(by(1)), true) : true;
        case Qt::Key_Down:
            return canLeave() ? (stepTo(by(-1)), true) : true;
        case Qt::Key_PageUp:
            return canLeave() ? (stepTo(value_.addMonths(-1)), true) : true;
        case Qt::Key_PageDown:
            return canLeave() ? (stepTo(value_.addMonths(1)), true) : true;
        default:
            break;
    }
    if (isEdited()) return false;
    const Date today = Today();
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            stepTo(by(1));
            return true;
        case Qt::Key_Minus:
            stepTo(by(-1));
            return true;
        case Qt::Key_T:
            stepTo(month_ ? Date(today.year(), today.month(), 1) : today);
            return true;
        case Qt::Key_Home:
            if (event->modifiers() & Qt::ShiftModifier) return false;
            stepTo(month_ ? Date(value_.year(), 1, 1) : Date(value_.year(), value_.month(), 1));
            return true;
        case Qt::Key_End:
            if (event->modifiers() & Qt::ShiftModifier) return false;
            stepTo(month_ ? Date(value_.year(), 12, 1)
                          : Date(value_.year(), value_.month(), daysInMonth(value_.year(), value_.month())));
            return true;
        default:
            return false;
    }
}

void DateField::keyPressEvent(QKeyEvent* event) {
    const bool opens =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier);
    if (opens) {
        if (!isReadOnly() && canLeave()) openCalendar();
        return;
    }
    if (event->key() == Qt::Key_Escape && isEdited()) {  // gives up what was typed
        setText(shown());
        selectAll();
        return;
    }
    if (step(event)) return;
    const QString typed = event->text();
    const bool plain = !typed.isEmpty() && typed.front().isPrint() && !(event->modifiers() & Qt::ControlModifier);
    const bool fits = typed.isEmpty() || typed.front().isDigit() || QStringLiteral("/-. ,").contains(typed.front()) ||
                      typed.front().isLetter();
    if (plain && !fits) return;
    QLineEdit::keyPressEvent(event);
}

void DateField::mousePressEvent(QMouseEvent* event) {
    if (!isReadOnly() && buttonRect().contains(event->position().toPoint())) {
        setFocus(Qt::MouseFocusReason);
        if (canLeave()) openCalendar();
        return;
    }
    QLineEdit::mousePressEvent(event);
}

void DateField::mouseMoveEvent(QMouseEvent* event) {
    setCursor(buttonRect().contains(event->position().toPoint()) ? Qt::ArrowCursor : Qt::IBeamCursor);
    QLineEdit::mouseMoveEvent(event);
}

void DateField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    QRect place(0, 0, 16, 16);
    place.moveCenter(buttonRect().center());
    static const QIcon calendar = iconOf("view-calendar");
    calendar.paint(&painter, place, Qt::AlignCenter, isEnabled() && !isReadOnly() ? QIcon::Normal : QIcon::Disabled);
}

void DateField::openCalendar() {
    auto* popup = new QFrame(this, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setFrameShape(QFrame::StyledPanel);
    auto* box = new QVBoxLayout(popup);
    box->setContentsMargins(1, 1, 1, 1);
    const auto choose = [this, popup](const Date& date) {
        popup->close();
        stepTo(date);
        setFocus();
    };
    QWidget* first = nullptr;
    if (month_) {
        box->addWidget(new MonthSheet(value_, choose, popup));
    } else {
        auto* calendar = new QCalendarWidget(popup);
        calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
        calendar->setHorizontalHeaderFormat(QCalendarWidget::SingleLetterDayNames);
        calendar->setLocale(QLocale::c());
        calendar->setFirstDayOfWeek(Qt::Sunday);
        dressCalendar(*calendar);
        calendar->setSelectedDate(QDate(value_.year(), value_.month(), value_.day()));
        calendar->setMinimumSize(280, 230);
        QObject::connect(calendar, &QCalendarWidget::activated,
                         [choose](QDate day) { choose(Date(day.year(), day.month(), day.day())); });
        QObject::connect(calendar, &QCalendarWidget::clicked,
                         [choose](QDate day) { choose(Date(day.year(), day.month(), day.day())); });
        box->addWidget(calendar);
        first = calendar;
    }
    popup->move(mapToGlobal(QPoint(0, height() + 2)));
    popup->show();
    if (first) first->setFocus();
}

// ---- the control -----------------------------------------------------------------------------------------------

namespace {
DateField* faceOf(const DatePicker& picker) { return static_cast<DateField*>(picker.widget()); }
}  // namespace

DatePicker::DatePicker(Form& owner, std::string name, std::string format) : Control(owner, std::move(name)) {
    auto* field = new DateField(std::move(format), owner.widget());
    adopt(field);
    field->onChanged = [this] {
        changed();
        raise(onChange, "Change");
    };
    QObject::connect(field, &QLineEdit::textEdited, [this] { changed(); });
}

std::string DatePicker::text() const { return Format(value(), "yyyy-MM-dd"); }

Date DatePicker::value() const { return faceOf(*this)->value(); }

void DatePicker::setValue(const Date& date) { faceOf(*this)->setValue(date); }

std::string DatePicker::shown() const { return toStd(faceOf(*this)->text()); }

bool DatePicker::locked() const { return faceOf(*this)->isReadOnly(); }

void DatePicker::setLocked(bool locked) {
    faceOf(*this)->setReadOnly(locked);
    faceOf(*this)->setProperty("kvLocked", locked);
    faceOf(*this)->update();
}

}  // namespace kv
