#include "platform/forms/Grid.h"

#include <QHeaderView>

#include "platform/forms/GridView.h"
#include "platform/forms/WidthMemory.h"

namespace kv {

struct Grid::Impl {
    GridView* view = nullptr;
    WidthMemory* memory = nullptr;

    void arrange();
    void setWidth(int col, int width_px) {
        view->setColumnHidden(col, width_px <= 0);
        if (width_px > 0) view->setColumnWidth(col, memory->width(col, width_px));
    }
};

void Grid::Impl::arrange() {
    for (int col = 0; col < view->model().columnCount(); ++col) {
        const GridColumn& column = view->model().column(col);
        view->horizontalHeader()->setSectionResizeMode(
            col, column.stretch ? QHeaderView::Stretch : QHeaderView::Interactive);
        setWidth(col, column.width_px);
    }
}

Grid::Grid(Form& form, std::string name) : Control(form, std::move(name)), impl_(std::make_unique<Impl>()) {
    auto run = [this](std::string_view event, const std::function<void()>& body) { guard(event, body); };
    impl_->view = new GridView(*this, run);
    impl_->memory = new WidthMemory(*impl_->view, form.name() + "." + this->name());
    adopt(impl_->view);
}

Grid::~Grid() { impl_->view->release(); }

std::string Grid::text() const { return editorOpen() ? editorText() : cell(row(), col()); }

void Grid::setColumns(std::vector<GridColumn> columns) {
    impl_->view->hideEditor();
    impl_->view->model().setColumns(std::move(columns));
    impl_->arrange();
    impl_->view->structureChanged();
}

int Grid::cols() const { return impl_->view->model().columnCount(); }
int Grid::rows() const { return impl_->view->model().rowCount() + 1; }

void Grid::setRows(int rows) {
    impl_->view->model().setRowCount(rows - 1);
    if (row() < 1 || row() >= this->rows()) impl_->view->structureChanged();
}

void Grid::insertRow(int before) {
    impl_->view->model().insertRow(before - 1);
    impl_->view->structureChanged();
}

void Grid::removeRow(int row) {
    impl_->view->model().removeRow(row - 1);
    impl_->view->structureChanged();
}

std::string Grid::cell(int row, int col) const {
    return row == 0 ? heading(col) : toStd(impl_->view->model().text(row - 1, col));
}

void Grid::setCell(int row, int col, std::string_view text) {
    impl_->view->model().setText(row - 1, col, qs(text));
    if (impl_->view->isCurrent(row, col)) impl_->view->setEditorText(qs(text));
}

std::string Grid::heading(int col) const {
    return col >= 0 && col < cols() ? impl_->view->model().column(col).heading : std::string();
}

int Grid::row() const { return impl_->view->currentRow(); }
int Grid::col() const { return impl_->view->currentCol(); }
void Grid::moveTo(int row, int col) { impl_->view->place(row, col); }

void Grid::setCellBackColor(int row, int col, unsigned rgb) {
    impl_->view->model().setBack(row - 1, col, QColor::fromRgb(rgb));
}

void Grid::setRowBackColor(int row, unsigned rgb) {
    for (int col = 0; col < cols(); ++col) setCellBackColor(row, col, rgb);
}

void Grid::setCellTint(int row, int col, Tint tint) { impl_->view->model().setTint(row - 1, col, tint); }

int Grid::columnWidth(int col) const { return impl_->view->isColumnHidden(col) ? 0 : impl_->view->columnWidth(col); }

void Grid::setColumnWidth(int col, int width_px) { impl_->setWidth(col, width_px); }

void Grid::setStretchColumn(int col) {
    impl_->view->horizontalHeader()->setSectionResizeMode(col, QHeaderView::Stretch);
}

bool Grid::rowIsVisible(int row) const {
    return impl_->view->viewport()->rect().intersects(impl_->view->cellRect(row, impl_->view->columnAt(0)));
}

int Grid::columnX(int col) const {
    return impl_->view->viewport()->x() + impl_->view->horizontalHeader()->sectionViewportPosition(col);
}

int Grid::rowY(int row) const { return impl_->view->viewport()->y() + impl_->view->rowViewportPosition(row - 1); }
int Grid::cellHeight() const { return kGridRow_px; }

Grid& Grid::rowsShown(int rows) {
    impl_->view->setMinimumHeight((rows + 1) * kGridRow_px + 2 * impl_->view->frameWidth());
    return *this;
}

std::string Grid::editorText() const { return toStd(impl_->view->editorText()); }
void Grid::setEditorText(std::string_view text) { impl_->view->setEditorText(qs(text)); }
bool Grid::editorOpen() const { return impl_->view->editorOpen(); }
void Grid::closeEditor() { impl_->view->hideEditor(); }
void Grid::openEditor() { impl_->view->openEditor(); }
bool Grid::commit() { return impl_->view->commit(); }

}  // namespace kv
