// Pictures of every control, light and dark: forms_gallery <folder>.

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <cstdio>

#include "platform/base/Date.h"
#include "platform/forms/Internal.h"
#include "tests/forms/Gallery.h"

namespace {

void shoot(QWidget* window, const std::string& path) {
    kv::settle();
    if (!window->grab().save(kv::qs(path))) std::fprintf(stderr, "%s cannot be written\n", path.c_str());
}

void shootAll(const std::string& start) {
    using namespace kv;
    gallery::frmShell shell;
    shell.Show();
    gallery::frmHome home;
    home.Show();
    shoot(shell.widget(), start + "home.png");
    auto* books = shell.widget()->findChild<QMenu*>();
    books->popup(shell.widget()->mapToGlobal(QPoint(10, 30)));
    shoot(books, start + "menu.png");
    books->close();
    gallery::frmBook book("Journal Vouchers Book");
    gallery::frmBook other("Cash Receipts Book");
    book.Show();
    other.Show();
    shoot(shell.widget(), start + "shell.png");
    dialogHooks().modal = [&](Form& form) {
        shoot(form.widget(), start + form.name() + ".png");
        if (Control* refused = form.control("txtRefused")) refused->setFocus();
        if (Control* grid = form.control("grdAccounts")) {
            grid->setFocus();
            static_cast<Grid*>(grid)->moveTo(2, 4);
        }
        shoot(form.widget(), start + form.name() + "-focus.png");
        for (const char* name : {"dtpDate", "dtpPeriod"})
            if (Control* date = form.control(name)) {
                date->setFocus();
                sendKeys("{F4}", true);
                shoot(QApplication::activePopupWidget(), start + name + ".png");
                QApplication::activePopupWidget()->close();
            }
        const auto box = openBox({.text = "Debit Total must be equal to Credit Total ",
                                  .title = "Warning",
                                  .icon = Icon::Stop,
                                  .buttons = Buttons::YesNoCancel,
                                  .defaultAnswer = Answer::No});
        shoot(box.get(), start + form.name() + "-box.png");
        form.Unload();
    };
    gallery::frmControls controls;
    controls.ShowModal();
    gallery::frmVoucher voucher;
    voucher.ShowModal();
    dialogHooks() = {};
    const auto input = openInput("Enter amount to pay.", kProgramTitle, "40.00");
    shoot(input.get(), start + "input.png");
}

}  // namespace

int main(int argc, char** argv) {
    kv::Application application(argc, argv);
    kv::fixClock(kv::Date(2024, 3, 15, 9, 30));
    const std::string folder = argc > 1 ? argv[1] : ".";
    for (const auto theme : {kv::Theme::Light, kv::Theme::Dark}) {
        application.setTheme(theme);
        shootAll(folder + (theme == kv::Theme::Dark ? "/dark-" : "/light-"));
    }
    return 0;
}
