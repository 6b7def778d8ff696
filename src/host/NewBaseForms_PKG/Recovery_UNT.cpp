#include "host/NewBaseForms_PKG/Recovery_UNT.h"

#include "host/NewBaseForms_PKG/RecoveryDialog_UNT.h"

TRecoveryChooser::~TRecoveryChooser() = default;

namespace {

class TDialogChooser : public TRecoveryChooser {
public:
    TRecoveryChoice choose(const TRecoveryRequest &request, QWidget *form) override
    {
        TRecovery_FRM dialog(request, form);
        dialog.exec();
        return dialog.Choice();
    }
};

TRecoveryChooser *&inForce()
{
    static TRecoveryChooser *chooser = nullptr;
    return chooser;
}

} // namespace

TRecoveryChooser &RecoveryChooser()
{
    static TDialogChooser dialog;
    return inForce() ? *inForce() : dialog;
}

void SetRecoveryChooser(TRecoveryChooser *chooser)
{
    inForce() = chooser;
}
