#include "Screens.h"

#include "app/MainWindow.h"
#include "app/PickTarget_FRM.h"
#include "app/SampleCompany.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/database/Query.h"

#include <QAction>

using namespace Qt::Literals::StringLiterals;

namespace {

class PickTarget : public Screens {
protected:
    PickTarget() { FillSampleCompany(session.connection()); }

    void work(TPickTarget_FRM &screen, const std::function<void()> &work)
    {
        Keys::runModal([&] { return screen.exec(); },
                       [&](QWidget *) {
                           Keys::waitFor([&] { return screen.isActiveWindow(); });
                           work();
                       });
    }
    static void goTo(TPickTarget_FRM &screen, int code)
    {
        ASSERT_TRUE(screen.ListQuery()->rowOfKey(code) >= 0);
        screen.ListQuery()->moveTo(screen.ListQuery()->rowOfKey(code));
    }
    /// Opens the module's list by a key, ticks the items and takes them.
    void pick(TPickTarget_FRM &screen, Qt::Key key, std::initializer_list<int> items)
    {
        Keys::runModal(
            [&] {
                Keys::press(&screen, key);
                return 0;
            },
            [&](QWidget *opened) {
                auto *list = qobject_cast<TBaseDock_FRM *>(opened);
                ASSERT_TRUE(list);
                ASSERT_EQ(list->objectName(), "TFiscalDeducation_List_FRM");
                Keys::waitFor([&] { return list->isActiveWindow(); });
                list->Grid()->setFocus();
                for (const int item : items) {
                    list->ListQuery()->moveTo(list->ListQuery()->rowOfKey(item));
                    Keys::press(list, Qt::Key_Space);
                }
                Keys::press(list, Qt::Key_Return);
                EXPECT_FALSE(list->isVisible());
            });
    }
    static int items(const TPickTarget_FRM &screen) { return screen.Items_QUR->recordCount(); }
};

} // namespace

TEST_F(PickTarget, EarningsAndDeductionsGoIntoAPersonnelOrder)
{
    TPickTarget_FRM screen(session, TPickTarget_FRM::Orders);
    work(screen, [&] {
        EXPECT_EQ(screen.ListQuery()->recordCount(), 200);
        goTo(screen, 1); // holds items already
        EXPECT_EQ(items(screen), 4);
        goTo(screen, 5);
        EXPECT_EQ(items(screen), 0);
        pick(screen, Qt::Key_F6, {11, 12});
        EXPECT_EQ(items(screen), 2);
        EXPECT_EQ(screen.Items_QUR->asString("KindTitle"), u"مزایا"_s);
        pick(screen, Qt::Key_F8, {21, 23});
        EXPECT_EQ(items(screen), 4);
        Keys::picture(&screen, "pick-into-order");
        EXPECT_EQ(told(), "");
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(text("select count(*) from tmpRecFiscal where RecruitmentCode=5"), "2");
    EXPECT_EQ(text("select Cost from tmpRecDeduction where Recruitmentcode=5 and ItemCode=23"), "3500000");
}

TEST_F(PickTarget, ItemsGoIntoAStaffOutputAndARefusedOneIsTold)
{
    TPickTarget_FRM screen(session, TPickTarget_FRM::Outputs);
    work(screen, [&] {
        goTo(screen, 2);
        pick(screen, Qt::Key_F6, {11, 15}); // 11 is fixed
        EXPECT_EQ(messages.last().number, 10120);
        EXPECT_EQ(items(screen), 1);
        Keys::picture(&screen, "pick-into-output");
    });
    EXPECT_EQ(text("select ItemCode from tmpstaffOutPutDetail where OutPutCode=2"), "15");
}

TEST_F(PickTarget, WithoutRecordsThereIsNothingToPickInto)
{
    run("delete from tmpstaffOutPutDetail");
    run("delete from StaffOutPut");
    TPickTarget_FRM screen(session, TPickTarget_FRM::Outputs);
    work(screen, [&] {
        EXPECT_FALSE(screen.Fiscal_BTN->isEnabled());
        EXPECT_FALSE(screen.Deduction_BTN->isEnabled());
        Keys::press(&screen, Qt::Key_F6);
        EXPECT_TRUE(screen.isActiveWindow());
    });
}

TEST_F(PickTarget, TheMenuOpensIt)
{
    TMain_FRM window(session);
    window.show();
    for (const char *name : {"PickIntoOrder_ACT", "PickIntoOutput_ACT"}) {
        QString title;
        Keys::runModal(
            [&] {
                window.findChild<QAction *>(name)->trigger();
                return 0;
            },
            [&](QWidget *screen) {
                title = screen->windowTitle();
                Keys::press(screen, Qt::Key_Escape);
            });
        EXPECT_EQ(title, name == "PickIntoOrder_ACT"_L1 ? u"حکم های کارگزینی"_s : u"کارکردها"_s);
    }
}
