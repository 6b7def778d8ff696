// Where the focus goes when a page is turned to.
#include "payrollinfo/Screens.h"

namespace {

TEST_F(PayrollInfoEditor, ThePageThatIsTurnedToBeginsWithItsFirstInput)
{
    show([](TPayrollInfoGet_FRM &screen) {
        EXPECT_EQ(screen.focusWidget(), screen.CaseNo_EDT);
        Keys::press(&screen, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(screen.focusWidget(), screen.PayerName_EDT);
    });
}

} // namespace
