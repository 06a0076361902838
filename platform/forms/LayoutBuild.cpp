// From the tree of a Layout to the toolkit's layouts, by one spacing scale.

#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QSplitter>
#include <algorithm>

#include "platform/forms/FormImpl.h"
#include "platform/forms/GridFooter.h"
#include "platform/forms/LayoutImpl.h"

namespace kv {

namespace {

using Kind = LayoutNode::Kind;

constexpr int kCaptionGap_px = 10;
constexpr int kFieldColumnsGap_px = 24;
constexpr int kButton_px = 92;

/// The caption of a field; a red star follows where the field is required.
class Caption : public QLabel {
public:
    Caption(const QString& text, const Control* field, QWidget* parent) : QLabel(text, parent) {
        const auto* box = dynamic_cast<const TextBox*>(field);
        starred_ = box && box->isRequired();
        if (starred_) setContentsMargins(0, 0, 9, 0);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (!starred_) return;
        QPainter painter(this);
        painter.setPen(tones().danger);
        painter.drawText(rect().adjusted(0, -1, 0, 0), Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("*"));
    }

private:
    bool starred_ = false;
};

/// Whether a part wants what room is left, along a row or along a column.
bool wantsRoom(const Layout& layout, Qt::Orientation along) {
    const LayoutNode& node = *layout.node();
    switch (node.kind) {
        case Kind::Control: {
            if (!node.control->widget()) return false;
            const QSizePolicy policy = node.control->widget()->sizePolicy();
            const auto which = along == Qt::Horizontal ? policy.horizontalPolicy() : policy.verticalPolicy();
            return (which & QSizePolicy::ExpandFlag) != 0;
        }
        case Kind::Expand:
        case Kind::Stretch:
        case Kind::Split:
        case Kind::Mdi:
        case Kind::Totals:
            return true;
        case Kind::Fields: {
            if (along == Qt::Horizontal) return true;
            for (const auto& row : node.rows)
                for (const auto& part : row.controls)
                    if (wantsRoom(part, along)) return true;
            return false;
        }
        case Kind::Width:
            if (along == Qt::Horizontal) return false;
            break;
        case Kind::Line:
        case Kind::Buttons:
            return along == Qt::Horizontal;
        case Kind::Tabs:
            if (along == Qt::Horizontal) return true;
            break;
        default:
            break;
    }
    return std::any_of(node.parts.begin(), node.parts.end(),
                       [&](const Layout& part) { return wantsRoom(part, along); });
}

/// Several lines high: its caption stands at the first of them.
bool isTall(const Layout& part) {
    const Control* control = part.node()->control;
    return control && control->widget() && control->widget()->sizeHint().height() > kField_px + 10;
}

/// The middle of a shell, which reaches to the edges of the window.
bool isMiddle(const Layout& part) {
    const LayoutNode& node = *part.node();
    return node.kind == Kind::Mdi || (node.kind == Kind::Expand && isMiddle(node.parts.front()));
}

class Builder {
public:
    Builder(Form& form, QWidget* parent) : form_(form), in_(form.impl()), parent_(parent) {}

    /// Fills `box` with one part, at the end.
    void add(const Layout& layout, QBoxLayout* box, int stretch = 0);

private:
    void addParts(const LayoutNode& node, QBoxLayout* box);
    static void alignCaptions(const LayoutNode& node, const QBoxLayout* box);
    void addRow(const LayoutNode& node, QBoxLayout* box, int stretch);
    void addButtons(const LayoutNode& node, QBoxLayout* box);
    void addFields(const LayoutNode& node, QBoxLayout* box, int stretch);
    void addTabs(const LayoutNode& node, QBoxLayout* box, int stretch);
    void addSplit(const LayoutNode& node, QBoxLayout* box, int stretch);
    void addTotals(const LayoutNode& node, QBoxLayout* box);
    void addPanel(QWidget* panel, const Layout& content, QBoxLayout* box, int stretch, QMargins margins);
    QVBoxLayout* inside(QWidget* widget, QMargins margins);
    void place(Control& control, QBoxLayout* box, int stretch);
    static void captionFor(Form::Impl& in, QLabel* caption, const std::vector<Layout>& parts);

    Form& form_;
    Form::Impl& in_;
    QWidget* parent_;
};

void Builder::place(Control& control, QBoxLayout* box, int stretch) {
    if (!control.widget()) return;
    in_.order.push_back(&control);
    box->addWidget(control.widget(), stretch);
}

QVBoxLayout* Builder::inside(QWidget* widget, QMargins margins) {
    auto* box = new QVBoxLayout(widget);
    box->setContentsMargins(margins);
    box->setSpacing(kGap_px);
    return box;
}

void Builder::addParts(const LayoutNode& node, QBoxLayout* box) {
    const auto along = box->direction() == QBoxLayout::LeftToRight ? Qt::Horizontal : Qt::Vertical;
    const bool filled =
        std::any_of(node.parts.begin(), node.parts.end(), [&](const Layout& part) { return wantsRoom(part, along); });
    const bool shell = along == Qt::Vertical && std::any_of(node.parts.begin(), node.parts.end(), isMiddle);
    for (std::size_t i = 0; i < node.parts.size(); ++i) {
        const Layout& part = node.parts[i];
        const bool last = i + 1 == node.parts.size();
        // what room is left goes below the fields of a dialog, above its buttons
        if (last && along == Qt::Vertical && !filled && part.node()->kind == Kind::Buttons) box->addStretch(1);
        const bool lastLabel = last && along == Qt::Horizontal && !filled && dynamic_cast<Label*>(part.node()->control);
        add(part, box, lastLabel || part.node()->kind == Kind::Expand ? 1 : 0);
        if (shell && part.node()->kind == Kind::Row)
            box->itemAt(box->count() - 1)->layout()->setContentsMargins(kGap_px, 10, kMargin_px, 10);
        if (last && !filled && !lastLabel && part.node()->kind != Kind::Buttons) box->addStretch(1);
    }
    alignCaptions(node, box);
}

/// Blocks of fields one below the other have their first captions equally wide.
void Builder::alignCaptions(const LayoutNode& node, const QBoxLayout* box) {
    std::vector<QGridLayout*> blocks;
    int wide = 0;
    for (int i = 0; i < box->count(); ++i)
        if (auto* grid = qobject_cast<QGridLayout*>(box->itemAt(i)->layout())) {
            blocks.push_back(grid);
            for (int line = 0; line < grid->rowCount(); ++line)
                if (const QLayoutItem* caption = grid->itemAtPosition(line, 0))
                    wide = std::max(wide, caption->widget()->sizeHint().width());
        }
    if (blocks.size() < 2 || node.kind == Kind::Row) return;
    for (QGridLayout* grid : blocks) grid->setColumnMinimumWidth(0, wide);
}

void Builder::addRow(const LayoutNode& node, QBoxLayout* box, int stretch) {
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap_px);
    box->addLayout(row, stretch);
    addParts(node, row);
}

void Builder::addButtons(const LayoutNode& node, QBoxLayout* box) {
    box->addSpacing(kGap_px);
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap_px);
    box->addLayout(row);
    const bool placed =
        std::any_of(node.parts.begin(), node.parts.end(), [](const Layout& p) { return wantsRoom(p, Qt::Horizontal); });
    if (!placed) row->addStretch(1);
    for (const Layout& part : node.parts) {
        if (auto* button = dynamic_cast<CommandButton*>(part.node()->control))
            button->widget()->setMinimumWidth(kButton_px);
        add(part, row, 0);
    }
}

void Builder::captionFor(Form::Impl& in, QLabel* caption, const std::vector<Layout>& parts) {
    for (const Layout& part : parts) {
        const Control* control = part.node()->control;
        if (!control || !control->widget()) continue;
        caption->setBuddy(focusTarget(*control));
        in.companions[control].push_back(caption);
        return;
    }
}

void Builder::addFields(const LayoutNode& node, QBoxLayout* box, int stretch) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(kCaptionGap_px);
    grid->setVerticalSpacing(kGap_px);
    box->addLayout(grid, stretch);
    const int columns = std::max(1, node.number);
    int cell = 0;
    for (const FieldRow& row : node.rows) {
        const int line = cell / columns;
        const int at = cell % columns * 3;
        ++cell;
        LayoutNode content;
        content.kind = Kind::Row;
        content.parts = row.controls;
        const bool grows = std::any_of(row.controls.begin(), row.controls.end(),
                                       [](const Layout& part) { return wantsRoom(part, Qt::Vertical); });
        const bool tall = grows || std::any_of(row.controls.begin(), row.controls.end(), isTall);
        Control* field = row.controls.empty() ? nullptr : row.controls.front().node()->control;
        auto* caption = new Caption(qs(row.caption), field, parent_);
        caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (tall) caption->setFixedHeight(kField_px);
        if (grows) grid->setRowStretch(line, 1);
        grid->addWidget(caption, line, at, tall ? Qt::AlignRight | Qt::AlignTop : Qt::AlignRight | Qt::AlignVCenter);
        auto* rest = new QHBoxLayout;
        rest->setSpacing(kGap_px);
        grid->addLayout(rest, line, at + 1);
        addParts(content, rest);
        captionFor(in_, caption, row.controls);
        grid->setColumnStretch(at + 1, 1);
        if (at > 0) grid->setColumnMinimumWidth(at - 1, kFieldColumnsGap_px - 2 * kCaptionGap_px);
    }
}

void Builder::addTabs(const LayoutNode& node, QBoxLayout* box, int stretch) {
    auto* tabs = static_cast<TabBox*>(node.control->widget());
    in_.order.push_back(node.control);
    box->addWidget(tabs, stretch);
    for (std::size_t i = 0; i < node.parts.size(); ++i) {
        auto* page = new QWidget;
        tabs->addPage(qs(node.captions[i]), page);
        Builder sub(form_, page);
        auto* content = inside(page, QMargins(0, kGap_px + 4, 0, 0));
        LayoutNode whole;
        whole.parts = {node.parts[i]};
        sub.addParts(whole, content);
    }
}

void Builder::addSplit(const LayoutNode& node, QBoxLayout* box, int stretch) {
    auto* splitter = new QSplitter(Qt::Horizontal, parent_);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(kGap_px + 4);
    for (const Layout& part : node.parts) {
        auto* side = new QWidget(splitter);
        Builder sub(form_, side);
        auto* content = inside(side, QMargins(0, 0, 0, 0));
        LayoutNode whole;
        whole.parts = {part};
        sub.addParts(whole, content);
        splitter->addWidget(side);
    }
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    in_.splits.emplace_back(form_.name() + ".split" + std::to_string(in_.splits.size()), splitter);
    box->addWidget(splitter, std::max(1, stretch));
}

void Builder::addTotals(const LayoutNode& node, QBoxLayout* box) {
    auto* both = new QVBoxLayout;
    both->setSpacing(0);
    box->addLayout(both, 1);
    place(*node.control, both, 1);
    std::vector<GridFooter::Cell> cells;
    for (const ColumnTotal& cell : node.totals) {
        in_.order.push_back(cell.total);
        cells.push_back({cell.column, cell.total->widget(), qs(cell.caption)});
    }
    QWidget* note = nullptr;
    if (node.note) {
        in_.order.push_back(node.note);
        note = node.note->widget();
    }
    auto& view = *dynamic_cast<GridView*>(node.control->widget());
    both->addWidget(new GridFooter(view, std::move(cells), note, parent_));
}

void Builder::addPanel(QWidget* panel, const Layout& content, QBoxLayout* box, int stretch, QMargins margins) {
    Builder sub(form_, panel);
    auto* column = inside(panel, margins);
    LayoutNode whole;
    whole.parts = {content};
    sub.addParts(whole, column);
    box->addWidget(panel, stretch);
}

void Builder::add(const Layout& layout, QBoxLayout* box, int stretch) {
    const LayoutNode& node = *layout.node();
    switch (node.kind) {
        case Kind::Control:
            return place(*node.control, box, stretch);
        case Kind::Column: {
            auto* column = new QVBoxLayout;
            const bool frames = std::any_of(node.parts.begin(), node.parts.end(), isMiddle);
            column->setSpacing(frames ? 0 : kGap_px);
            box->addLayout(column, stretch);
            return addParts(node, column);
        }
        case Kind::Row:
            return addRow(node, box, stretch);
        case Kind::Fields:
            return addFields(node, box, stretch);
        case Kind::Group: {
            auto* frame = new QGroupBox(qs(node.captions.front()), parent_);
            return addPanel(frame, node.parts.front(), box, stretch, QMargins(12, 10, 12, 12));
        }
        case Kind::Card: {
            auto* frame = new QFrame(parent_);
            frame->setProperty("kvCard", true);
            frame->setFrameShape(QFrame::StyledPanel);
            return addPanel(frame, node.parts.front(), box, stretch, QMargins(12, 12, 12, 12));
        }
        case Kind::Tabs:
            return addTabs(node, box, stretch);
        case Kind::Expand:
            return add(node.parts.front(), box, 1);
        case Kind::Stretch:
            return box->addStretch(1);
        case Kind::Gap:
            return box->addSpacing(kGap_px);
        case Kind::Buttons:
            return addButtons(node, box);
        case Kind::Split:
            return addSplit(node, box, stretch);
        case Kind::Width: {
            const LayoutNode& only = *node.parts.front().node();
            if (only.kind == Kind::Control && only.control->widget() && box->direction() == QBoxLayout::LeftToRight) {
                only.control->widget()->setFixedWidth(charsWidth(parent_, node.number));  // stays in line with the row
                return place(*only.control, box, 0);
            }
            auto* holder = new QWidget(parent_);
            holder->setFixedWidth(charsWidth(holder, node.number));
            return addPanel(holder, node.parts.front(), box, stretch, QMargins(0, 0, 0, 0));
        }
        case Kind::Line: {
            auto* rule = new QFrame(parent_);
            const bool across = box->direction() != QBoxLayout::LeftToRight;
            rule->setFrameShape(across ? QFrame::HLine : QFrame::VLine);
            rule->setFrameShadow(QFrame::Plain);
            return box->addWidget(rule, stretch);
        }
        case Kind::Totals:
            return addTotals(node, box);
        case Kind::Mdi: {
            in_.makeMdi();
            return box->addWidget(in_.middle, std::max(1, stretch));
        }
    }
}

/// A label with an accelerator leads to the next field, as its caption would.
void befriendLabels(Form::Impl& in) {
    for (std::size_t i = 0; i + 1 < in.order.size(); ++i) {
        auto* label = qobject_cast<QLabel*>(in.order[i]->widget());
        if (!label || !dynamic_cast<Label*>(in.order[i]) || QKeySequence::mnemonic(label->text()).isEmpty()) continue;
        for (std::size_t k = i + 1; k < in.order.size() && !label->buddy(); ++k)
            if (focusTarget(*in.order[k])->focusPolicy() & Qt::TabFocus) label->setBuddy(focusTarget(*in.order[k]));
    }
}

}  // namespace

TabBox::TabBox(QWidget* parent) : QWidget(parent), bar_(new QTabBar(this)), pages_(new QStackedWidget(this)) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    box->addWidget(bar_);
    box->addWidget(pages_, 1);
    bar_->setExpanding(false);
    bar_->setDrawBase(true);
    bar_->setUsesScrollButtons(true);
    bar_->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(bar_);
    QObject::connect(bar_, &QTabBar::currentChanged, pages_, &QStackedWidget::setCurrentIndex);
}

void TabBox::addPage(const QString& caption, QWidget* page) {
    pages_->addWidget(page);
    bar_->addTab(caption);
}

void buildLayout(Form& form, const Layout& layout, QWidget* target, int margin_px) {
    Form::Impl& in = form.impl();
    auto* box = new QVBoxLayout(target);
    box->setContentsMargins(margin_px, margin_px, margin_px, margin_px);
    box->setSpacing(kGap_px);
    Builder builder(form, target);
    const bool grows = wantsRoom(layout, Qt::Vertical);
    builder.add(layout, box, 1);
    if (!grows) box->setStretch(0, 0);
    befriendLabels(in);
    // a control that the layout leaves out exists for code only
    for (Control* one : form.controls())
        if (one->widget() && one->widget()->parentWidget() == form.widget() &&
            !qobject_cast<QStatusBar*>(one->widget()) && !qobject_cast<QToolBar*>(one->widget()))
            one->widget()->hide();
}

}  // namespace kv
