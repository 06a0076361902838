#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <unordered_map>

#include "platform/base/Error.h"
#include "platform/forms/Internal.h"
#include "platform/forms/Lists.h"

namespace kv {

namespace {

constexpr int kKeyRole = Qt::UserRole;

std::string keyOf(const QTreeWidgetItem* node) { return node ? toStd(node->data(0, kKeyRole).toString()) : ""; }

/// Rows as high as those of lists.
class TreeRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), kListRow_px};
    }
};

/// A tree that asks before a node moves: a drop is told to the owner, who changes the tree when it will.
class Tree : public QTreeWidget {
public:
    std::function<void(std::string dragged, std::string target)> dropped;
    std::function<void(std::string key)> clicked;
    std::function<bool(std::string key)> opened;

protected:
    QStringList mimeTypes() const override { return {QString::fromLatin1(kDraggedKey)}; }

    QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override {
        if (items.isEmpty()) return nullptr;
        auto* dragged = new QMimeData;
        dragged->setData(QString::fromLatin1(kDraggedKey), QByteArray::fromStdString(keyOf(items.first())));
        return dragged;
    }

    void dragEnterEvent(QDragEnterEvent* event) override { takeDrag(*event); }
    void dragMoveEvent(QDragMoveEvent* event) override {
        takeDrag(*event);
        const QTreeWidgetItem* node = itemAt(event->position().toPoint());
        if (!node) event->ignore();
    }

    /// The owner is told when the drag is over: what it shows then may be a box.
    void dropEvent(QDropEvent* event) override {
        const QTreeWidgetItem* target = itemAt(event->position().toPoint());
        const std::string dragged = event->mimeData()->data(QString::fromLatin1(kDraggedKey)).toStdString();
        event->setDropAction(Qt::IgnoreAction);
        event->accept();
        if (!target || dragged.empty() || dragged == keyOf(target) || !dropped) return;
        QMetaObject::invokeMethod(
            this, [this, dragged, onto = keyOf(target)] { dropped(dragged, onto); }, Qt::QueuedConnection);
    }

    static void takeDrag(QDropEvent& event) {
        if (event.mimeData()->hasFormat(QString::fromLatin1(kDraggedKey))) {
            event.acceptProposedAction();
        } else {
            event.ignore();
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        const QTreeWidgetItem* before = currentItem();
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            if (!before || !opened || !opened(keyOf(before))) event->ignore();
            return;
        }
        if (event->key() == Qt::Key_Escape) return event->ignore();
        QTreeWidget::keyPressEvent(event);
        if (currentItem() && currentItem() != before && clicked) clicked(keyOf(currentItem()));
    }

    void mousePressEvent(QMouseEvent* event) override {
        QTreeWidget::mousePressEvent(event);
        const QTreeWidgetItem* node = itemAt(event->position().toPoint());
        if (event->button() == Qt::LeftButton && node && clicked) clicked(keyOf(node));
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        const QTreeWidgetItem* node = itemAt(event->position().toPoint());
        if (node && opened && opened(keyOf(node))) return;
        QTreeWidget::mouseDoubleClickEvent(event);
    }
};

}  // namespace

struct TreeView::Impl {
    Tree* tree = nullptr;
    std::unordered_map<std::string, QTreeWidgetItem*> nodes;

    QTreeWidgetItem* node(std::string_view key) const {
        const auto it = nodes.find(std::string(key));
        return it == nodes.end() ? nullptr : it->second;
    }
    void forget(const QTreeWidgetItem* node) {
        for (int i = 0; i < node->childCount(); ++i) forget(node->child(i));
        nodes.erase(keyOf(node));
    }
};

TreeView::TreeView(Form& form, std::string name) : Control(form, std::move(name)), impl_(std::make_unique<Impl>()) {
    impl_->tree = new Tree;
    Tree& tree = *impl_->tree;
    tree.setHeaderHidden(true);
    tree.setUniformRowHeights(true);
    tree.setItemDelegate(new TreeRows(&tree));
    tree.setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree.setIconSize(QSize(16, 16));
    setOwnEnter(&tree);
    tree.clicked = [this](std::string key) { raise(onNodeClick, "NodeClick", std::move(key)); };
    tree.opened = [this](std::string key) {
        if (!onDblClick) return false;
        raise(onDblClick, "DblClick", std::move(key));
        return true;
    };
    tree.dropped = [this](std::string dragged, std::string target) {
        raise(onDrop, "DragDrop", std::move(dragged), std::move(target));
    };
    adopt(&tree);
}

TreeView::~TreeView() = default;

std::string TreeView::text() const { return nodeText(selectedKey()); }

void TreeView::clear() {
    impl_->nodes.clear();
    impl_->tree->clear();
}

void TreeView::addNode(std::string_view parent, std::string_view key, std::string_view text, std::string_view icon) {
    if (has(key)) throw Error(35602, "TreeView", "The key \"" + std::string(key) + "\" is in the tree already");
    QTreeWidgetItem* above = impl_->node(parent);
    if (!parent.empty() && !above) {
        throw Error(35601, "TreeView", "There is no node with the key \"" + std::string(parent) + "\"");
    }
    auto* node = above ? new QTreeWidgetItem(above) : new QTreeWidgetItem(impl_->tree);
    node->setText(0, qs(text));
    node->setData(0, kKeyRole, qs(key));
    if (!icon.empty()) node->setIcon(0, iconOf(icon));
    impl_->nodes.emplace(key, node);
}

void TreeView::setNodeText(std::string_view key, std::string_view text) {
    if (auto* node = impl_->node(key)) node->setText(0, qs(text));
}

void TreeView::removeNode(std::string_view key) {
    auto* node = impl_->node(key);
    if (!node) return;
    impl_->forget(node);
    delete node;
}

bool TreeView::has(std::string_view key) const { return impl_->node(key) != nullptr; }

std::string TreeView::nodeText(std::string_view key) const {
    const auto* node = impl_->node(key);
    return node ? toStd(node->text(0)) : std::string();
}

std::string TreeView::parentOf(std::string_view key) const {
    const auto* node = impl_->node(key);
    return node ? keyOf(node->parent()) : std::string();
}

std::vector<std::string> TreeView::childrenOf(std::string_view key) const {
    const QTreeWidgetItem* node = key.empty() ? impl_->tree->invisibleRootItem() : impl_->node(key);
    std::vector<std::string> keys;
    for (int i = 0; node && i < node->childCount(); ++i) keys.push_back(keyOf(node->child(i)));
    return keys;
}

std::string TreeView::selectedKey() const { return keyOf(impl_->tree->currentItem()); }

void TreeView::select(std::string_view key) {
    auto* node = impl_->node(key);
    impl_->tree->setCurrentItem(node);
    if (node) impl_->tree->scrollToItem(node);
}

void TreeView::expand(std::string_view key, bool open) {
    if (auto* node = impl_->node(key)) node->setExpanded(open);
}

std::string TreeView::keyOfText(std::string_view text) const {
    for (QTreeWidgetItemIterator it(impl_->tree); *it; ++it) {
        if (toStd((*it)->text(0)) == text) return keyOf(*it);
    }
    return {};
}

void TreeView::setDragging(bool on) {
    impl_->tree->setDragDropMode(on ? QAbstractItemView::DragDrop : QAbstractItemView::NoDragDrop);
    impl_->tree->setDropIndicatorShown(on);
}

}  // namespace kv
