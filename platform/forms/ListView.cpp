#include <QHeaderView>

#include "platform/forms/Internal.h"
#include "platform/forms/ListTable.h"
#include "platform/forms/Lists.h"
#include "platform/forms/WidthMemory.h"

namespace kv {

struct ListView::Impl {
    explicit Impl(ListView& list) : owner(list) {}

    ListView& owner;
    ListModel rows;
    ListTable* table = nullptr;
    int sorted = -1;
    bool descending = false;
    bool lost = false;  ///< a filter hid the selected row and all others
    WidthMemory* memory = nullptr;

    void listen();
    void arrange();
    int fillingColumn() const;
    void headingClicked(int column);
    void sort(int column, bool down);
};

void ListView::Impl::listen() {
    table->rowClicked = [this](int row) { owner.raise(owner.onItemClick, "ItemClick", row); };
    table->rowOpened = [this](int row) {
        if (!owner.onDblClick) return false;
        owner.raise(owner.onDblClick, "DblClick", row);
        return true;
    };
    table->rowChecked = [this](int row) {
        rows.setChecked(row, !rows.item(row).checked);
        owner.raise(owner.onItemCheck, "ItemCheck", row);
    };
    QHeaderView* head = table->horizontalHeader();
    QObject::connect(head, &QHeaderView::sectionClicked, table, [this](int column) { headingClicked(column); });
}

void ListView::Impl::arrange() {
    QHeaderView* head = table->horizontalHeader();
    const auto count = static_cast<std::size_t>(rows.columnCount());
    const int filling = fillingColumn();
    for (std::size_t i = 0; i < count; ++i) {
        const int column = static_cast<int>(i);
        const ListColumn& spec = rows.columns()[i];
        head->setSectionResizeMode(column,
                                   spec.stretch || column == filling ? QHeaderView::Stretch : QHeaderView::Interactive);
        table->setColumnHidden(column, spec.width_chars <= 0);
        if (spec.width_chars <= 0) continue;
        const int asked = charsWidth(table, spec.width_chars) + 12 + (i == 0 && table->checks ? 22 : 0);
        table->setColumnWidth(column, memory->width(column, asked));
    }
}

/// Where no column was named to take the room that is left, the widest one of texts does; -1 where one was.
int ListView::Impl::fillingColumn() const {
    int widest = -1;
    for (int i = 0; i < rows.columnCount(); ++i) {
        const ListColumn& spec = rows.columns()[static_cast<std::size_t>(i)];
        if (spec.stretch) return -1;
        const bool wider =
            widest < 0 || spec.width_chars > rows.columns()[static_cast<std::size_t>(widest)].width_chars;
        if (spec.align == Align::Left && wider) widest = i;
    }
    return widest;
}

void ListView::Impl::sort(int column, bool down) {
    sorted = column;
    descending = down;
    const auto order = down ? Qt::DescendingOrder : Qt::AscendingOrder;
    table->horizontalHeader()->setSortIndicatorShown(true);
    table->horizontalHeader()->setSortIndicator(column, order);
    rows.sort(column, order);
    if (table->currentIndex().isValid()) table->scrollTo(table->currentIndex());
}

void ListView::Impl::headingClicked(int column) {
    sort(column, sorted == column && !descending);
    owner.raise(owner.onColumnClick, "ColumnClick", column);
}

ListView::ListView(Form& form, std::string name)
    : Control(form, std::move(name)), impl_(std::make_unique<Impl>(*this)) {
    impl_->table = new ListTable(impl_->rows);
    impl_->memory = new WidthMemory(*impl_->table, form.name() + "." + this->name());
    impl_->listen();
    adopt(impl_->table);
}

ListView::~ListView() {
    // The widget goes with its form, later than the rows.
    if (widget()) impl_->table->setModel(nullptr);
}

std::string ListView::text() const { return selected() < 0 ? std::string() : cell(selected(), 0); }

void ListView::setColumns(std::vector<ListColumn> columns) {
    impl_->rows.setColumns(std::move(columns));
    impl_->arrange();
}

const std::vector<ListColumn>& ListView::columns() const { return impl_->rows.columns(); }

ListView& ListView::checkBoxes() {
    impl_->table->checks = true;
    if (!columns().empty()) impl_->arrange();
    return *this;
}

ListView& ListView::multiSelect() {
    impl_->table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return *this;
}

ListView& ListView::rows(int visibleRows) {
    impl_->table->setMinimumHeight(kGridRow_px + visibleRows * kListRow_px + 2 * impl_->table->frameWidth());
    return *this;
}

void ListView::clear() { setItems({}); }

void ListView::setItems(std::vector<Item> items) {
    impl_->rows.setItems(std::move(items));
    impl_->sorted = -1;
    impl_->table->horizontalHeader()->setSortIndicatorShown(false);
}

int ListView::addItem(Item item) { return impl_->rows.add(std::move(item)); }
void ListView::removeItem(int row) { impl_->rows.remove(row); }
int ListView::count() const { return impl_->rows.count(); }
const ListView::Item& ListView::item(int row) const { return impl_->rows.item(row); }

std::string ListView::cell(int row, int column) const {
    if (!impl_->rows.has(row) || column < 0) return {};
    const auto& cells = item(row).cells;
    return static_cast<std::size_t>(column) < cells.size() ? cells[static_cast<std::size_t>(column)] : std::string();
}

void ListView::setCell(int row, int column, std::string_view text) { impl_->rows.setCell(row, column, text); }
int ListView::find(std::string_view key) const { return impl_->rows.find(key); }
int ListView::findText(std::string_view text) const { return impl_->rows.findText(text); }

int ListView::selected() const {
    const int row = impl_->table->currentRow();
    if (row < 0 || !impl_->table->selectionModel()->isRowSelected(impl_->table->currentIndex().row())) return -1;
    return row;
}

std::string ListView::selectedKey() const { return selected() < 0 ? std::string() : item(selected()).key; }

void ListView::select(int row) {
    const int line = impl_->rows.has(row) ? impl_->rows.lineOf(row) : -1;
    if (line < 0) {
        impl_->table->clearSelection();
        return impl_->table->selectionModel()->clearCurrentIndex();
    }
    const QModelIndex index = impl_->rows.index(line, 0);
    impl_->table->selectionModel()->setCurrentIndex(index,
                                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    impl_->table->scrollTo(index);
}

bool ListView::checked(int row) const { return impl_->rows.has(row) && item(row).checked; }
void ListView::setChecked(int row, bool checked) { impl_->rows.setChecked(row, checked); }
void ListView::checkAll(bool checked) { impl_->rows.checkAll(checked); }

std::vector<int> ListView::checkedRows() const {
    std::vector<int> checked;
    for (int row = 0; row < count(); ++row) {
        if (item(row).checked) checked.push_back(row);
    }
    return checked;
}

void ListView::sortBy(int column, bool descending) { impl_->sort(column, descending); }

void ListView::mark(std::string_view text) {
    impl_->table->marked = qs(text);
    impl_->table->viewport()->update();
}

void ListView::filter(std::string_view text) {
    const int row = selected();
    impl_->rows.filter(text);
    if (row >= 0 && impl_->rows.lineOf(row) >= 0) return select(row);
    const bool lost = std::exchange(impl_->lost, false) || row >= 0;
    if (!lost) return;
    impl_->lost = impl_->rows.rowCount() == 0;
    select(impl_->lost ? -1 : impl_->rows.rowOf(0));
}

int ListView::shown() const { return impl_->rows.rowCount(); }

ListView& ListView::emptyText(std::string_view text) {
    impl_->table->emptyText = qs(text);
    return *this;
}

void ListView::setDragging(bool on) {
    impl_->table->setDragEnabled(on);
    impl_->table->setDragDropMode(on ? QAbstractItemView::DragOnly : QAbstractItemView::NoDragDrop);
}

}  // namespace kv
