#include "platform/login/clsCurrentUser.h"

#include "platform/login/frmLogin.h"

namespace kv {

void clsCurrentUser::ShowMain() {
    signedIn_ = {};
    frmLogin dialog(options_, PasswordDeptCode);
    dialog.ShowModal();
    if (dialog.signedIn()) signedIn_ = *dialog.signedIn();
}

}  // namespace kv
