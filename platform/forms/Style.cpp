// Sizes, hints and places of the style; StyleDraw.cpp draws.

#include "platform/forms/Style.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QStyleOption>
#include <algorithm>

#include "platform/forms/Internal.h"

namespace kv {

namespace {

constexpr int kTitleBar_px = 32;
constexpr int kTitleButton_px = 34;
constexpr int kScrollBar_px = 12;
constexpr int kMenuRow_px = 28;
constexpr int kComboArrow_px = 26;

}  // namespace

Style::Style() : QProxyStyle(QStringLiteral("fusion")) {}

void Style::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QComboBox*>(widget) || widget->inherits("QTabBar") || widget->inherits("QLineEdit"))
        widget->setAttribute(Qt::WA_Hover);
    // a list that drops down from a combo box has rows as high as a menu's
    if (widget->inherits("QComboBoxListView")) static_cast<QAbstractItemView*>(widget)->setMouseTracking(true);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_TitleBarHeight:
            return kTitleBar_px;
        case PM_MdiSubWindowFrameWidth:
        case PM_DefaultFrameWidth:
        case PM_MenuPanelWidth:
            return 1;
        case PM_ComboBoxFrameWidth:
            return 1;
        case PM_ButtonMargin:
            return 12;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
        case PM_TabBarTabShiftHorizontal:
        case PM_TabBarTabShiftVertical:
        case PM_TabBarTabOverlap:
        case PM_TabBarBaseOverlap:
            return 0;
        case PM_TabBarTabHSpace:
            return 28;
        case PM_TabBarTabVSpace:
            return 16;
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return kMargin_px;
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
            return kGap_px;
        case PM_ScrollBarExtent:
            return kScrollBar_px;
        case PM_ScrollBarSliderMin:
            return 36;
        case PM_ScrollView_ScrollBarSpacing:
            return 0;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return 16;
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
            return 8;
        case PM_MenuHMargin:
        case PM_MenuVMargin:
            return 4;
        case PM_MenuBarPanelWidth:
            return 0;
        case PM_MenuBarHMargin:
            return 6;
        case PM_MenuBarVMargin:
            return 2;
        case PM_MenuBarItemSpacing:
            return 2;
        case PM_ToolBarFrameWidth:
            return 1;
        case PM_ToolBarItemMargin:
            return 4;
        case PM_ToolBarItemSpacing:
            return 2;
        case PM_ToolBarSeparatorExtent:
            return 9;
        case PM_ButtonIconSize:
        case PM_SmallIconSize:
        case PM_ListViewIconSize:
            return 16;
        case PM_FocusFrameHMargin:
            if (widget && widget->inherits("QComboBoxListView")) return 6;
            break;
        case PM_HeaderMargin:
            return 7;
        case PM_ToolTipLabelFrameWidth:
            return 5;
        default:
            break;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const {
    switch (hint) {
        case SH_TitleBar_NoBorder:
        case SH_UnderlineShortcut:
        case SH_ItemView_ShowDecorationSelected:
        case SH_MenuBar_MouseTracking:
        case SH_Menu_MouseTracking:
        case SH_ComboBox_ListMouseTracking:
            return 1;
        case SH_ComboBox_Popup:
        case SH_EtchDisabledText:
        case SH_Widget_Animate:
        case SH_Widget_Animation_Duration:
        case SH_Menu_FadeOutOnHide:
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_Menu_SubMenuPopupDelay:
            return 120;
        case SH_ScrollBar_ContextMenu:
        case SH_WindowFrame_Mask:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
        case CT_PushButton: {
            const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            const int icon = button && !button->icon.isNull() ? 6 : 0;
            return QSize(std::max(76, size.width() + 28 + icon), kField_px + 2);
        }
        case CT_LineEdit:
            return QSize(result.width(), std::max(result.height(), kField_px));
        case CT_ComboBox:
            return QSize(result.width() + 12, kField_px);
        case CT_MenuBarItem:
            return QSize(size.width() + 18, kMenuRow_px);
        case CT_MenuItem: {
            const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            if (item && item->menuItemType == QStyleOptionMenuItem::Separator) return QSize(10, 9);
            const int shortcut = item && item->text.contains(u'\t') ? 24 : 0;
            return QSize(size.width() + 64 + shortcut, kMenuRow_px);
        }
        case CT_ItemViewItem:
            if (widget && widget->inherits("QComboBoxListView")) return QSize(result.width() + 12, kListRow_px);
            return result;
        case CT_ToolButton:
            return QSize(result.width() + 6, std::max(result.height() + 2, kField_px));
        case CT_TabBarTab:
            return QSize(result.width(), 36);
        case CT_MdiControls:
            return QSize(3 * kTitleButton_px, kMenuRow_px);
        case CT_HeaderSection:
            return QSize(result.width(), 30);
        case CT_ProgressBar:
            return QSize(std::max(160, result.width()), 10);
        default:
            return result;
    }
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    switch (element) {
        case SE_LineEditContents: {
            const QRect inner = option->rect;
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            return frame && frame->lineWidth == 0 ? inner.adjusted(4, 0, -4, 0) : inner.adjusted(7, 1, -7, -1);
        }
        case SE_ProgressBarGroove:
        case SE_ProgressBarContents:
            return option->rect;
        case SE_HeaderLabel: {
            const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
            const bool sorted = header && header->sortIndicator != QStyleOptionHeader::None;
            return option->rect.adjusted(6, 0, sorted ? -20 : -7, 0);
        }
        case SE_HeaderArrow:
            return QRect(option->rect.right() - 18, option->rect.top(), 14, option->rect.height());
        case SE_ComboBoxFocusRect:
            return {};
        default:
            return QProxyStyle::subElementRect(element, option, widget);
    }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                            const QWidget* widget) const {
    const QRect all = option->rect;
    if (control == CC_ComboBox) {
        if (part == SC_ComboBoxArrow)
            return QRect(all.right() - kComboArrow_px, all.top(), kComboArrow_px, all.height());
        if (part == SC_ComboBoxEditField) {
            const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
            return all.adjusted(combo && combo->editable ? 4 : 8, 1, -kComboArrow_px, -1);
        }
        if (part == SC_ComboBoxListBoxPopup) return all.adjusted(0, 2, 0, 2);
        return all;
    }
    if (control == CC_ScrollBar) {
        const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        if (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine) return {};
        if (!bar) return all;
        const bool across = bar->orientation == Qt::Horizontal;
        const int room = across ? all.width() : all.height();
        const int range = bar->maximum - bar->minimum;
        int length = room;
        if (range > 0)
            length = std::clamp(static_cast<int>(static_cast<qint64>(room) * bar->pageStep / (range + bar->pageStep)),
                                std::min(room, pixelMetric(PM_ScrollBarSliderMin, option, widget)), room);
        const int start =
            sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, room - length, bar->upsideDown);
        const auto cut = [&](int from, int size) {
            return across ? QRect(all.left() + from, all.top(), size, all.height())
                          : QRect(all.left(), all.top() + from, all.width(), size);
        };
        switch (part) {
            case SC_ScrollBarSlider:
                return cut(start, length);
            case SC_ScrollBarSubPage:
                return cut(0, start);
            case SC_ScrollBarAddPage:
                return cut(start + length, room - start - length);
            default:
                return all;
        }
    }
    if (control == CC_TitleBar) {
        const auto button = [&](int fromRight) {
            return QRect(all.right() + 1 - fromRight * kTitleButton_px, all.top() + 2, kTitleButton_px,
                         all.height() - 3);
        };
        switch (part) {
            case SC_TitleBarCloseButton:
                return button(1);
            case SC_TitleBarMaxButton:
            case SC_TitleBarNormalButton:
                return button(2);
            case SC_TitleBarMinButton:
                return button(3);
            case SC_TitleBarLabel:
                return all.adjusted(14, 2, -3 * kTitleButton_px, 0);
            default:
                return {};
        }
    }
    if (control == CC_MdiControls) {
        const auto button = [&](int at) {
            return QRect(all.left() + at * kTitleButton_px, all.top(), kTitleButton_px, all.height());
        };
        if (part == SC_MdiMinButton) return button(0);
        if (part == SC_MdiNormalButton) return button(1);
        if (part == SC_MdiCloseButton) return button(2);
        return {};
    }
    if (control == CC_GroupBox) {
        const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        const int title = box && !box->text.isEmpty() ? option->fontMetrics.height() + 6 : 0;
        if (part == SC_GroupBoxLabel) return QRect(all.left() + 1, all.top(), all.width() - 2, title);
        if (part == SC_GroupBoxContents || part == SC_GroupBoxFrame) return all.adjusted(0, title, 0, 0);
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

}  // namespace kv
