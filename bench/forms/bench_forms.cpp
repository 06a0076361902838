// How long it takes to open a form, paint it and close it again, and to move between cells: medians in milliseconds
// of processor time, offscreen. The toolkit's bare widgets (as many, in one box) stand beside as the measure of the
// possible.

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#include "platform/forms/Internal.h"
#include "tests/forms/Gallery.h"

namespace {

constexpr int kTimes = 40;

double median_ms(const std::function<void()>& work) {
    std::vector<double> taken;
    for (int i = 0; i < kTimes; ++i) {
        const std::clock_t start = std::clock();
        work();
        taken.push_back(1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    std::nth_element(taken.begin(), taken.begin() + kTimes / 2, taken.end());
    return taken[kTimes / 2];
}

void report(const char* what, double ms) { std::printf("%-46s %7.2f ms\n", what, ms); }

template <class Screen>
void openAndClose() {
    Screen screen;
    kv::dialogHooks().modal = [](kv::Form& form) {
        kv::settle();
        form.widget()->grab();
        form.Unload();
    };
    screen.ShowModal();
}

/// The widgets of the voucher without anything of ours.
void bareWidgets() {
    QWidget window;
    auto* box = new QVBoxLayout(&window);
    for (int i = 0; i < 4; ++i) box->addWidget(new QLineEdit(&window));
    for (int i = 0; i < 8; ++i) box->addWidget(new QLabel(QStringLiteral("Caption"), &window));
    for (int i = 0; i < 5; ++i) box->addWidget(new QPushButton(QStringLiteral("Button"), &window));
    box->addWidget(new QComboBox(&window));
    box->addWidget(new QTableView(&window));
    window.resize(860, 520);
    window.show();
    kv::settle();
    window.grab();
}

}  // namespace

int main(int argc, char** argv) {
    const kv::Application application(argc, argv);
    openAndClose<kv::gallery::frmVoucher>();  // what is made once, as fonts and icons, is not counted
    openAndClose<kv::gallery::frmControls>();
    report("bare widgets of a voucher: open, paint, close", median_ms(bareWidgets));
    report("voucher: open, paint, close", median_ms(openAndClose<kv::gallery::frmVoucher>));
    report("every control: open, paint, close", median_ms(openAndClose<kv::gallery::frmControls>));
    kv::gallery::frmShell shell;
    shell.Show();
    report("book inside the shell: open, paint, close", median_ms([&] {
               kv::gallery::frmBook book("Journal Vouchers");
               book.Show();
               kv::settle();
               shell.widget()->grab();
               book.Unload();
           }));
    kv::gallery::frmVoucher voucher(kv::Form::Window::Child);
    voucher.Show();
    voucher.grdAccounts.setFocus();
    int row = 1;
    report("cell move in the grid with its paint", median_ms([&] {
               row = row % 4 + 1;
               voucher.grdAccounts.moveTo(row, 4);
               kv::settle();
               voucher.widget()->repaint();
           }));
    return 0;
}
