// How the style draws fields, buttons, marks, tabs, menus, title bars and scroll bars.

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleOption>
#include <utility>

#include "platform/forms/Internal.h"
#include "platform/forms/Style.h"

namespace kv {

namespace {

constexpr qreal kRound_px = 4;

QColor blend(const QColor& a, const QColor& b, qreal part) {
    return QColor::fromRgbF(static_cast<float>(a.redF() * (1 - part) + b.redF() * part),
                            static_cast<float>(a.greenF() * (1 - part) + b.greenF() * part),
                            static_cast<float>(a.blueF() * (1 - part) + b.blueF() * part));
}

/// A rounded box on whole pixels.
void box(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& edge, qreal edge_px = 1) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter->setPen(edge.isValid() ? QPen(edge, edge_px) : QPen(Qt::NoPen));
    const qreal half = edge.isValid() ? edge_px / 2 : 0;
    painter->drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), kRound_px, kRound_px);
    painter->restore();
}

void line(QPainter* painter, const QColor& colour, QPointF from, QPointF to, qreal width_px = 1) {
    painter->save();
    painter->setPen(QPen(colour, width_px, Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(from, to);
    painter->restore();
}

/// A thin arrow head; `turns` quarter turns from pointing down.
void chevron(QPainter* painter, const QRect& rect, const QColor& colour, int turns) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(QRectF(rect).center());
    painter->rotate(90.0 * turns);
    painter->setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawPolyline(QPolygonF({QPointF(-4, -2), QPointF(0, 2), QPointF(4, -2)}));
    painter->restore();
}

bool flag(const QWidget* widget, const char* name) { return widget && widget->property(name).toBool(); }

bool isOn(const QStyleOption* option, QStyle::StateFlag state) { return option->state.testFlag(state); }

void drawField(const QStyleOption* option, QPainter* painter, const QWidget* widget, bool locked) {
    const Tones& t = tones();
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool focus = isOn(option, QStyle::State_HasFocus);
    const QColor fill = locked || !enabled ? t.locked : option->palette.color(QPalette::Base);
    if (flag(widget, "kvRefused"))
        return box(painter, option->rect, blend(fill, t.dangerSoft, 0.6), t.danger, focus ? 2 : 1.4);
    if (focus) return box(painter, option->rect, fill, t.accent, 2);
    box(painter, option->rect, fill,
        enabled && isOn(option, QStyle::State_MouseOver) && !locked ? t.borderStrong : t.border);
}

void drawButton(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
    const Tones& t = tones();
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool down = isOn(option, QStyle::State_Sunken) || isOn(option, QStyle::State_On);
    const bool hover = enabled && isOn(option, QStyle::State_MouseOver);
    const bool focus = isOn(option, QStyle::State_HasFocus) && enabled;
    const QColor face = option->palette.color(QPalette::Button);
    const QColor text = option->palette.color(QPalette::ButtonText);
    if (flag(widget, "kvPrimary")) {
        QColor fill = t.accent;
        if (!enabled)
            fill = blend(t.accent, option->palette.color(QPalette::Window), 0.6);
        else if (down)
            fill = blend(t.accent, Qt::black, 0.18);
        else if (hover)
            fill = blend(t.accent, t.dark ? Qt::white : Qt::black, 0.09);
        box(painter, option->rect, fill, QColor());
        if (focus) box(painter, option->rect.adjusted(2, 2, -2, -2), QColor(), t.accentText, 1);
        return;
    }
    QColor fill = face;
    if (!enabled)
        fill = blend(face, option->palette.color(QPalette::Window), 0.6);
    else if (down)
        fill = blend(face, text, 0.14);
    else if (hover)
        fill = flag(widget, "kvLarge") ? blend(face, t.accent, 0.08) : blend(face, text, 0.05);
    if (focus) return box(painter, option->rect, fill, t.accent, 2);
    box(painter, option->rect, fill, !enabled ? blend(t.border, fill, 0.4) : hover ? t.borderStrong : t.border);
}

void drawMark(const QStyleOption* option, QPainter* painter, bool round) {
    const Tones& t = tones();
    const bool enabled = isOn(option, QStyle::State_Enabled);
    const bool on = isOn(option, QStyle::State_On);
    const bool partly = isOn(option, QStyle::State_NoChange);
    const bool hover = isOn(option, QStyle::State_MouseOver) && enabled;
    QRectF square(0, 0, 16, 16);
    square.moveCenter(QRectF(option->rect).center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor ink = enabled ? t.accent : t.borderStrong;
    const bool filled = on || partly;
    painter->setPen(QPen(filled ? ink : hover ? t.accent : t.borderStrong, 1.2));
    painter->setBrush(filled && !round ? ink : enabled ? option->palette.color(QPalette::Base) : t.locked);
    const QRectF inner = square.adjusted(0.8, 0.8, -0.8, -0.8);
    if (round)
        painter->drawEllipse(inner);
    else
        painter->drawRoundedRect(inner, 3, 3);
    if (round && on) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(ink);
        painter->drawEllipse(square.center(), 4.2, 4.2);
    } else if (on) {
        painter->setPen(QPen(t.accentText, 1.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        const QPointF o = square.topLeft();
        painter->drawPolyline(QPolygonF({o + QPointF(4.2, 8.2), o + QPointF(7, 11), o + QPointF(11.9, 5.4)}));
    } else if (partly) {
        painter->setPen(QPen(t.accentText, 1.9, Qt::SolidLine, Qt::RoundCap));
        painter->drawLine(square.topLeft() + QPointF(4.6, 8), square.topLeft() + QPointF(11.4, 8));
    }
    painter->restore();
}

void drawMenuItem(const QStyleOptionMenuItem* item, QPainter* painter) {
    const Tones& t = tones();
    if (item->menuItemType == QStyleOptionMenuItem::Separator) {
        const qreal y = item->rect.center().y() + 0.5;
        return line(painter, t.border, QPointF(item->rect.left() + 8, y), QPointF(item->rect.right() - 8, y));
    }
    const bool enabled = isOn(item, QStyle::State_Enabled);
    if (isOn(item, QStyle::State_Selected) && enabled)
        box(painter, item->rect.adjusted(2, 1, -2, -1), t.accentSoft, QColor());
    const QColor ink = item->palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text);
    const QRect picture(item->rect.left() + 10, item->rect.center().y() - 7, 16, 16);
    if (item->checkType != QStyleOptionMenuItem::NotCheckable && item->checked) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(enabled ? t.accent : t.hint, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF o = picture.topLeft();
        painter->drawPolyline(QPolygonF({o + QPointF(3, 8), o + QPointF(6.5, 11.5), o + QPointF(13, 4.5)}));
        painter->restore();
    } else if (!item->icon.isNull()) {
        item->icon.paint(painter, picture, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
    }
    const auto tab = item->text.indexOf(u'\t');
    const QRect room = item->rect.adjusted(36, 0, -22, 0);
    painter->save();
    painter->setFont(item->font);
    painter->setPen(ink);
    constexpr int kText = Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine | Qt::TextDontClip;
    painter->drawText(room, kText | Qt::AlignLeft, tab < 0 ? item->text : item->text.left(tab));
    if (tab >= 0) {
        painter->setPen(enabled ? t.hint : ink);
        painter->drawText(room, kText | Qt::AlignRight, item->text.mid(tab + 1));
    }
    painter->restore();
    if (item->menuItemType == QStyleOptionMenuItem::SubMenu)
        chevron(painter, QRect(item->rect.right() - 20, item->rect.top(), 14, item->rect.height()), ink, 3);
}

void drawTitleButton(QPainter* painter, const QRect& rect, QStyle::SubControl which, const QColor& ink, bool hot) {
    const Tones& t = tones();
    const bool closes = which == QStyle::SC_TitleBarCloseButton;
    painter->save();
    if (hot) painter->fillRect(rect, closes ? QColor("#d93636") : blend(t.titleBar, t.titleBarText, 0.1));
    painter->setPen(QPen(hot && closes ? QColor(Qt::white) : ink, 1.2));
    painter->setRenderHint(QPainter::Antialiasing, closes);
    QRect g(0, 0, 10, 10);
    g.moveCenter(rect.center());
    if (closes) {
        painter->drawLine(g.topLeft(), g.bottomRight());
        painter->drawLine(g.topRight(), g.bottomLeft());
    } else if (which == QStyle::SC_TitleBarMaxButton) {
        painter->drawRect(g.adjusted(0, 0, -1, -1));
    } else if (which == QStyle::SC_TitleBarNormalButton) {
        painter->drawRect(g.adjusted(0, 2, -3, -1));
        painter->drawPolyline(
            QPolygon({QPoint(g.left() + 2, g.top() + 2), QPoint(g.left() + 2, g.top()), QPoint(g.right(), g.top()),
                      QPoint(g.right(), g.bottom() - 3), QPoint(g.right() - 2, g.bottom() - 3)}));
    } else {
        painter->drawLine(g.left(), g.center().y() + 1, g.right(), g.center().y() + 1);
    }
    painter->restore();
}

void drawTitleBar(const QStyleOptionTitleBar* bar, QPainter* painter, const QWidget* widget, const QStyle* style) {
    const Tones& t = tones();
    const bool active = (bar->titleBarState & Qt::WindowActive) || isOn(bar, QStyle::State_Active);
    painter->save();
    painter->fillRect(bar->rect, t.titleBar);
    if (active) painter->fillRect(QRect(bar->rect.left(), bar->rect.top(), bar->rect.width(), 2), t.accent);
    painter->fillRect(QRect(bar->rect.left(), bar->rect.bottom(), bar->rect.width(), 1), t.border);
    const QColor ink = active ? t.titleBarText : t.hint;
    QFont font = painter->font();
    font.setWeight(QFont::DemiBold);
    painter->setFont(font);
    painter->setPen(ink);
    const QRect room = style->subControlRect(QStyle::CC_TitleBar, bar, QStyle::SC_TitleBarLabel, widget);
    painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetrics(font).elidedText(bar->text, Qt::ElideRight, room.width()));
    painter->restore();
    for (const auto part : {QStyle::SC_TitleBarMinButton, QStyle::SC_TitleBarMaxButton, QStyle::SC_TitleBarNormalButton,
                            QStyle::SC_TitleBarCloseButton}) {
        const bool maximized = bar->titleBarState & Qt::WindowMaximized;
        if (part == QStyle::SC_TitleBarMaxButton && maximized) continue;
        if (part == QStyle::SC_TitleBarNormalButton && !maximized) continue;
        if (!(bar->subControls & part) && part != QStyle::SC_TitleBarNormalButton) continue;
        const QRect rect = style->subControlRect(QStyle::CC_TitleBar, bar, part, widget);
        const bool hot = (bar->activeSubControls & part) && isOn(bar, QStyle::State_MouseOver);
        drawTitleButton(painter, rect, part, ink, hot);
    }
}

void drawScrollBar(const QStyleOptionSlider* bar, QPainter* painter, const QWidget* widget, const QStyle* style) {
    const Tones& t = tones();
    painter->fillRect(bar->rect, bar->palette.color(QPalette::Base));
    if (bar->maximum <= bar->minimum) return;
    const QRect slider = style->subControlRect(QStyle::CC_ScrollBar, bar, QStyle::SC_ScrollBarSlider, widget);
    const bool held = isOn(bar, QStyle::State_Sunken) && (bar->activeSubControls & QStyle::SC_ScrollBarSlider);
    const bool hot = isOn(bar, QStyle::State_MouseOver);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(held ? t.hint : hot ? t.borderStrong : blend(t.border, t.borderStrong, 0.35));
    const bool across = bar->orientation == Qt::Horizontal;
    const QRectF knob = across ? QRectF(slider).adjusted(2, 3, -2, -3) : QRectF(slider).adjusted(3, 2, -3, -2);
    painter->drawRoundedRect(knob, 3, 3);
    painter->restore();
}

void drawTab(const QStyleOptionTab* tab, QPainter* painter) {
    const Tones& t = tones();
    const bool front = isOn(tab, QStyle::State_Selected);
    const bool enabled = isOn(tab, QStyle::State_Enabled);
    painter->save();
    if (!front && enabled && isOn(tab, QStyle::State_MouseOver))
        box(painter, tab->rect.adjusted(2, 4, -2, -4),
            blend(tab->palette.color(QPalette::Window), t.titleBarText, 0.06), QColor());
    if (front)
        painter->fillRect(QRect(tab->rect.left() + 8, tab->rect.bottom() - 1, tab->rect.width() - 16, 2), t.accent);
    QFont font = painter->font();
    if (front) font.setWeight(QFont::DemiBold);
    painter->setFont(font);
    painter->setPen(!enabled ? tab->palette.color(QPalette::Disabled, QPalette::WindowText)
                    : front  ? t.titleBarText
                             : t.hint);
    painter->drawText(tab->rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, tab->text);
    if (front && isOn(tab, QStyle::State_HasFocus))
        box(painter, tab->rect.adjusted(4, 5, -4, -5), QColor(), t.accent, 1);
    painter->restore();
}

void drawHeader(const QStyleOptionHeader* header, QPainter* painter) {
    const Tones& t = tones();
    painter->fillRect(header->rect, t.header);
    line(painter, t.border, QPointF(header->rect.left(), header->rect.bottom() + 0.5),
         QPointF(header->rect.right() + 1, header->rect.bottom() + 0.5));
    if (header->orientation == Qt::Horizontal && header->position != QStyleOptionHeader::End &&
        header->position != QStyleOptionHeader::OnlyOneSection)
        line(painter, t.border, QPointF(header->rect.right() + 0.5, header->rect.top() + 7),
             QPointF(header->rect.right() + 0.5, header->rect.bottom() - 6));
}

/// Drawn on a whole pixel: between two of them the glyphs lose what hangs below the line.
void drawHeaderLabel(const QStyleOptionHeader* header, QPainter* painter) {
    const QString text = header->fontMetrics.elidedText(header->text, Qt::ElideRight, header->rect.width());
    const int spare = header->rect.width() - header->fontMetrics.horizontalAdvance(text);
    const int indent = header->textAlignment & Qt::AlignRight     ? spare
                       : header->textAlignment & Qt::AlignHCenter ? spare / 2
                                                                  : 0;
    const int line = (header->rect.height() + header->fontMetrics.ascent() - header->fontMetrics.descent()) / 2;
    painter->setPen(tones().headerText);
    painter->drawText(header->rect.topLeft() + QPoint(indent, line), text);
}

void drawFrame(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
    const Tones& t = tones();
    if (flag(widget, "kvCard")) return box(painter, option->rect, t.panel, t.border);
    const bool focus = isOn(option, QStyle::State_HasFocus) && qobject_cast<const QAbstractScrollArea*>(widget);
    if (flag(widget, "kvRefused")) return box(painter, option->rect, QColor(), t.danger, focus ? 2 : 1.4);
    box(painter, option->rect, QColor(), focus ? t.accent : t.border, focus ? 1.4 : 1);
}

void drawButtonLabel(const QStyleOptionButton* button, QPainter* painter, const QWidget* widget) {
    const bool enabled = isOn(button, QStyle::State_Enabled);
    const bool primary = flag(widget, "kvPrimary");
    constexpr int kSpace_px = 7;
    const QSize icon = button->icon.isNull() ? QSize(0, 0) : button->iconSize;
    const int text_px = button->fontMetrics.horizontalAdvance(QString(button->text).remove(u'&'));
    const int gap = icon.width() && !button->text.isEmpty() ? kSpace_px : 0;
    int x = button->rect.center().x() - (icon.width() + gap + text_px) / 2 + 1;
    if (icon.width()) {
        const QRect place(x, button->rect.center().y() - icon.height() / 2 + 1, icon.width(), icon.height());
        button->icon.paint(painter, place, Qt::AlignCenter,
                           !enabled && !primary ? QIcon::Disabled
                           : primary            ? QIcon::Selected
                                                : QIcon::Normal);
        x += icon.width() + gap;
    }
    painter->save();
    QFont font = painter->font();
    if (primary) font.setWeight(QFont::DemiBold);
    painter->setFont(font);
    painter->setPen(primary
                        ? tones().accentText
                        : button->palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    const QRect room =
        icon.width() ? QRect(x, button->rect.top(), button->rect.right() - x, button->rect.height()) : button->rect;
    painter->drawText(room,
                      Qt::TextShowMnemonic | Qt::TextSingleLine | Qt::AlignVCenter |
                          (icon.width() ? Qt::AlignLeft : Qt::AlignHCenter),
                      button->text);
    painter->restore();
}

}  // namespace

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    const Tones& t = tones();
    switch (element) {
        case PE_PanelLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            const bool locked = isOn(option, State_ReadOnly) || flag(widget, "kvLocked");
            if (frame && frame->lineWidth == 0) {
                if (!widget || !qobject_cast<QComboBox*>(widget->parentWidget()))
                    painter->fillRect(option->rect, option->palette.color(QPalette::Base));
                return;
            }
            return drawField(option, painter, widget, locked);
        }
        case PE_FrameLineEdit:
        case PE_FrameStatusBarItem:
        case PE_PanelMenuBar:
            return;
        case PE_PanelButtonCommand:
            return drawButton(option, painter, widget);
        case PE_PanelButtonTool:
        case PE_PanelButtonBevel: {
            const bool on = isOn(option, State_On);
            const bool down = isOn(option, State_Sunken);
            const QColor window = option->palette.color(QPalette::Window);
            if (on)
                box(painter, option->rect, t.accentSoft, QColor());
            else if (isOn(option, State_Enabled) && (down || isOn(option, State_MouseOver)))
                box(painter, option->rect, blend(window, t.titleBarText, down ? 0.16 : 0.08), QColor());
            return;
        }
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            return drawMark(option, painter, false);
        case PE_IndicatorRadioButton:
            return drawMark(option, painter, true);
        case PE_FrameFocusRect: {
            if (widget && (widget->inherits("QCheckBox") || widget->inherits("QRadioButton")))
                box(painter, option->rect.adjusted(-2, 0, 2, 0), QColor(), t.accent, 1);
            return;
        }
        case PE_Frame:
            return drawFrame(option, painter, widget);
        case PE_FrameGroupBox:
            return box(painter, option->rect, t.panel, t.border);
        case PE_FrameTabBarBase:
            return line(painter, t.border, QPointF(option->rect.left(), option->rect.bottom() + 0.5),
                        QPointF(option->rect.right() + 1, option->rect.bottom() + 0.5));
        case PE_FrameWindow: {
            painter->save();
            painter->setPen(isOn(option, State_Active) ? t.borderStrong : t.border);
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            painter->restore();
            return;
        }
        case PE_PanelMenu:
        case PE_FrameMenu:
            painter->fillRect(option->rect, element == PE_PanelMenu ? t.panel : QColor(Qt::transparent));
            painter->save();
            painter->setPen(t.border);
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            painter->restore();
            return;
        case PE_PanelStatusBar:
            painter->fillRect(option->rect, option->palette.color(QPalette::Window));
            return line(painter, t.border, QPointF(option->rect.left(), option->rect.top() + 0.5),
                        QPointF(option->rect.right() + 1, option->rect.top() + 0.5));
        case PE_PanelScrollAreaCorner:
            return painter->fillRect(option->rect, option->palette.color(QPalette::Base));
        case PE_PanelTipLabel:
            return box(painter, option->rect, t.panel, t.borderStrong);
        case PE_IndicatorToolBarSeparator:
            return line(painter, t.border, QPointF(option->rect.center().x() + 0.5, option->rect.top() + 6),
                        QPointF(option->rect.center().x() + 0.5, option->rect.bottom() - 5));
        case PE_IndicatorArrowDown:
            return chevron(painter, option->rect, option->palette.color(QPalette::ButtonText), 0);
        case PE_IndicatorArrowLeft:
            return chevron(painter, option->rect, option->palette.color(QPalette::ButtonText), 1);
        case PE_IndicatorArrowUp:
            return chevron(painter, option->rect, option->palette.color(QPalette::ButtonText), 2);
        case PE_IndicatorArrowRight:
            return chevron(painter, option->rect, option->palette.color(QPalette::ButtonText), 3);
        case PE_IndicatorHeaderArrow: {
            const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
            if (header && header->sortIndicator != QStyleOptionHeader::None)
                chevron(painter, option->rect, t.hint, header->sortIndicator == QStyleOptionHeader::SortUp ? 0 : 2);
            return;
        }
        case PE_IndicatorBranch: {
            if (isOn(option, State_Children)) chevron(painter, option->rect, t.hint, isOn(option, State_Open) ? 0 : 3);
            return;
        }
        default:
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    const Tones& t = tones();
    switch (element) {
        case CE_PushButtonLabel:
            if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
                return drawButtonLabel(button, painter, widget);
            break;
        case CE_MenuItem:
            if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
                return drawMenuItem(item, painter);
            break;
        case CE_ToolButtonLabel:
            if (const auto* tool = qstyleoption_cast<const QStyleOptionToolButton*>(option);
                tool && tool->toolButtonStyle == Qt::ToolButtonTextBesideIcon) {
                QStyleOptionToolButton shifted(*tool);
                shifted.rect.adjust(5, 0, -3, 0);
                return QProxyStyle::drawControl(element, &shifted, painter, widget);
            }
            break;
        case CE_MenuBarEmptyArea:
            return painter->fillRect(option->rect, t.panel);
        case CE_MenuBarItem:
            if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
                painter->fillRect(item->rect, t.panel);
                const bool enabled = isOn(item, State_Enabled);
                if (isOn(item, State_Selected) && enabled)
                    box(painter, item->rect.adjusted(1, 2, -1, -2), t.accentSoft, QColor());
                painter->setPen(
                    item->palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
                painter->drawText(item->rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, item->text);
                return;
            }
            break;
        case CE_TabBarTabShape:
            if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) return drawTab(tab, painter);
            break;
        case CE_TabBarTabLabel:
            return;  // drawn with the shape
        case CE_ProgressBarGroove:
            return box(painter, option->rect, t.header, t.border);
        case CE_ProgressBarContents:
            if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option)) {
                const qint64 range = std::max(1, bar->maximum - bar->minimum);
                const auto wide =
                    static_cast<int>(static_cast<qint64>(bar->rect.width()) * (bar->progress - bar->minimum) / range);
                if (wide > 3)
                    box(painter, QRect(bar->rect.topLeft(), QSize(wide, bar->rect.height())), t.accent, QColor());
                return;
            }
            break;
        case CE_HeaderSection:
            if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option))
                return drawHeader(header, painter);
            break;
        case CE_HeaderLabel:
            if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option); header->icon.isNull())
                return drawHeaderLabel(header, painter);
            break;
        case CE_HeaderEmptyArea:
            return painter->fillRect(option->rect, t.header);
        case CE_ToolBar:
            painter->fillRect(option->rect, t.panel);
            return line(painter, t.border, QPointF(option->rect.left(), option->rect.bottom() + 0.5),
                        QPointF(option->rect.right() + 1, option->rect.bottom() + 0.5));
        case CE_Splitter: {
            QRect grip(0, 0, 3, 24);
            grip.moveCenter(option->rect.center());
            return box(painter, grip, isOn(option, State_MouseOver) ? t.borderStrong : t.border, QColor());
        }
        case CE_ShapedFrame:
            if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option)) {
                if (frame->frameShape == QFrame::HLine) {
                    const qreal y = frame->rect.center().y() + 0.5;
                    return line(painter, t.border, QPointF(frame->rect.left(), y), QPointF(frame->rect.right() + 1, y));
                }
                if (frame->frameShape == QFrame::VLine) {
                    const qreal x = frame->rect.center().x() + 0.5;
                    return line(painter, t.border, QPointF(x, frame->rect.top()), QPointF(x, frame->rect.bottom() + 1));
                }
                if (frame->frameShape == QFrame::StyledPanel) return drawFrame(option, painter, widget);
            }
            break;
        default:
            break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (control) {
        case CC_ComboBox:
            if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
                const bool locked = flag(widget, "kvLocked");
                drawField(combo, painter, widget, locked);
                const QRect arrow = subControlRect(CC_ComboBox, combo, SC_ComboBoxArrow, widget);
                const bool live = isOn(combo, State_Enabled) && !locked;
                return chevron(painter, arrow, live ? combo->palette.color(QPalette::ButtonText) : tones().borderStrong,
                               0);
            }
            break;
        case CC_MdiControls:
            for (const auto& [part, like] : {std::pair{SC_MdiMinButton, SC_TitleBarMinButton},
                                             std::pair{SC_MdiNormalButton, SC_TitleBarNormalButton},
                                             std::pair{SC_MdiCloseButton, SC_TitleBarCloseButton}}) {
                if (!(option->subControls & part)) continue;
                const bool hot = option->activeSubControls == part && isOn(option, State_MouseOver);
                drawTitleButton(painter, subControlRect(control, option, part, widget), like, tones().titleBarText,
                                hot);
            }
            return;
        case CC_TitleBar:
            if (const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option))
                return drawTitleBar(bar, painter, widget, this);
            break;
        case CC_ScrollBar:
            if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
                return drawScrollBar(bar, painter, widget, this);
            break;
        case CC_ToolButton:
            // a button that opens a menu looks like any other
            if (const auto* tool = qstyleoption_cast<const QStyleOptionToolButton*>(option);
                tool && (tool->features & QStyleOptionToolButton::HasMenu)) {
                QStyleOptionToolButton plain(*tool);
                plain.features &= ~QStyleOptionToolButton::HasMenu;
                return QProxyStyle::drawComplexControl(control, &plain, painter, widget);
            }
            break;
        case CC_GroupBox:
            if (const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option)) {
                QStyleOption frame(*group);
                frame.rect = subControlRect(CC_GroupBox, group, SC_GroupBoxFrame, widget);
                drawPrimitive(PE_FrameGroupBox, &frame, painter, widget);
                painter->save();
                QFont font = painter->font();
                font.setWeight(QFont::DemiBold);
                painter->setFont(font);
                painter->setPen(group->palette.color(QPalette::WindowText));
                painter->drawText(subControlRect(CC_GroupBox, group, SC_GroupBoxLabel, widget),
                                  Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, group->text);
                painter->restore();
                return;
            }
            break;
        default:
            break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace kv
