#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/Component_ZLM/AccountSelector_ZLM.h"

#include <QDialog>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class AccountSelector : public testing::Test {
protected:
    AccountSelector()
    {
        for (const char *sql : {"insert into AccountTotal(Kol,Name) values(31,N'پرداختنی')",
                                "insert into AccountTotal(Kol,Name) values(61,N'پرسنلی')",
                                "insert into AccountAssistant(Kol,Moin,Name) values(31,2,N'بیمه')",
                                "insert into AccountAssistant(Kol,Moin,Name) values(61,1,N'حقوق')",
                                "insert into AccountAssistant(Kol,Moin,Name) values(61,2,N'مزایا')",
                                "insert into AccountDetail(Tafzili,Name) values(1,N'تولید')",
                                "insert into AccountDetail(Tafzili,Name) values(2000000000,N'فروش')"})
            db.run(QString::fromUtf8(sql));
        screen.setLayoutDirection(Qt::RightToLeft);
        screen.resize(620, 80);
        account = new TSelect_AccountCode(&screen);
        auto *layout = new QVBoxLayout(&screen);
        layout->addWidget(account);
        other = new QLineEdit(&screen);
        layout->addWidget(other);
        screen.show();
        Keys::waitFor([this] { return screen.isActiveWindow(); });
        account->setFocus();
    }
    QString name() const { return account->Name_LBL->text(); }
    /// Opens the picker of the box that has the focus.
    void pick(const std::function<void(QWidget *)> &work)
    {
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_F2);
                return 0;
            },
            [&](QWidget *picker) {
                Keys::waitFor([&] { return picker->isActiveWindow(); });
                work(picker);
            });
    }

    TestDatabase db;
    ScriptedMessages messages;
    QDialog screen;
    TSelect_AccountCode *account;
    QLineEdit *other;
};

} // namespace

TEST_F(AccountSelector, ShowsTheNamesOfWhatIsTyped)
{
    EXPECT_TRUE(account->TotalCode_EDT->hasFocus());
    Keys::type(account->TotalCode_EDT, u"۶۱"_s);
    Keys::type(account->AssistantCode_EDT, "2");
    Keys::type(account->DetailCode_EDT, "2000000000");
    EXPECT_TRUE(Keys::waitFor([&] { return name() == u"پرسنلی / مزایا / فروش"_s; }));
    EXPECT_EQ(account->TotalCode(), 61);
    EXPECT_EQ(account->AssistantCode(), 2);
    EXPECT_EQ(account->DetailCode(), 2000000000);
    EXPECT_EQ(messages.take(), QStringList());
    Keys::picture(&screen, "account_selector");
}

TEST_F(AccountSelector, ACodeThatTheChartDoesNotHaveIsToldAndCountsAsNone)
{
    Keys::type(account->TotalCode_EDT, "62");
    Keys::press(&screen, Qt::Key_Tab);
    ASSERT_EQ(messages.all().size(), 1);
    EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
    EXPECT_EQ(messages.last().control, account->TotalCode_EDT);
    EXPECT_EQ(account->TotalCode_EDT->GetText(), "62");
    EXPECT_EQ(account->TotalCode(), 0);
    EXPECT_EQ(name(), u"کد کل 62 ثبت نشده است"_s);
    Keys::picture(&screen, "account_selector_unknown");
}

TEST_F(AccountSelector, AnAssistantIsLookedUpWithinItsTotal)
{
    account->SetCodes("31", "1", "1");
    EXPECT_EQ(account->AssistantCode(), 0);
    account->SetCodes("61", "1", "1");
    EXPECT_EQ(account->AssistantCode(), 1);
    Keys::retype(account->TotalCode_EDT, "31");
    EXPECT_EQ(account->AssistantCode(), 0); // asked before the pause of the typing is over
    EXPECT_EQ(account->TotalCode(), 31);
}

TEST_F(AccountSelector, LevelsAreLimitedToTheirColumns)
{
    Keys::type(account->TotalCode_EDT, "32768");
    EXPECT_EQ(account->TotalCode_EDT->GetText(), "3276");
    Keys::type(account->AssistantCode_EDT, "32767");
    EXPECT_EQ(account->AssistantCode_EDT->GetText(), "32767");
    Keys::type(account->DetailCode_EDT, "2147483648");
    EXPECT_EQ(account->DetailCode_EDT->GetText(), "214748364");
    account->SetDetailLimit(32767);
    account->Clear();
    Keys::type(account->DetailCode_EDT, "40000");
    EXPECT_EQ(account->DetailCode_EDT->GetText(), "4000");
}

TEST_F(AccountSelector, ClearsAndShowsNothingForZero)
{
    int changes = 0;
    QObject::connect(account, &TSelect_AccountCode::changed, [&] { ++changes; });
    account->SetCodes("61", "1", "1");
    EXPECT_EQ(changes, 3);
    account->SetCodes("0", "0", "0");
    EXPECT_TRUE(account->TotalCode_EDT->IsEmpty());
    EXPECT_EQ(name(), QString());
    account->EnableLevels(true, false, false);
    EXPECT_TRUE(account->TotalCode_EDT->isEnabled());
    EXPECT_FALSE(account->AssistantCode_EDT->isEnabled());
    EXPECT_FALSE(account->DetailCode_EDT->isEnabled());
}

TEST_F(AccountSelector, F2PicksATotal)
{
    pick([&](QWidget *picker) {
        Keys::type(picker->focusWidget(), u"پرسنل"_s);
        Keys::press(picker, Qt::Key_Return); // on to the list
        Keys::picture(picker, "account_picker");
        Keys::press(picker, Qt::Key_Return);
        EXPECT_FALSE(picker->isVisible());
    });
    EXPECT_EQ(account->TotalCode_EDT->GetText(), "61");
    EXPECT_EQ(name(), u"پرسنلی"_s);
    EXPECT_EQ(screen.focusWidget(), account->TotalCode_EDT);
}

TEST_F(AccountSelector, EscapePicksNothing)
{
    account->SetCodes("61", "2", "");
    pick([&](QWidget *picker) { Keys::press(picker, Qt::Key_Escape); });
    EXPECT_EQ(account->TotalCode_EDT->GetText(), "61");
    EXPECT_EQ(account->AssistantCode_EDT->GetText(), "2");
}

TEST_F(AccountSelector, AnAssistantIsPickedWithinTheTotalThatStands)
{
    account->SetCodes("31", "", "");
    account->AssistantCode_EDT->setFocus();
    pick([&](QWidget *picker) {
        auto *grid = Keys::find<QTableView>(picker, "Account1_GRD");
        EXPECT_EQ(grid->model()->rowCount(), 1);
        Keys::press(picker, Qt::Key_Return);
        Keys::press(picker, Qt::Key_Return);
    });
    EXPECT_EQ(account->AssistantCode_EDT->GetText(), "2");
    EXPECT_EQ(name(), u"پرداختنی / بیمه"_s);
}

TEST_F(AccountSelector, AnAssistantBringsItsTotalAlong)
{
    account->AssistantCode_EDT->setFocus();
    pick([&](QWidget *picker) {
        EXPECT_EQ(Keys::find<QTableView>(picker, "Account1_GRD")->model()->rowCount(), 3);
        Keys::picture(picker, "account_picker_assistants");
        Keys::press(picker, Qt::Key_Return);
        Keys::press(picker, Qt::Key_End);
        Keys::press(picker, Qt::Key_Return);
    });
    EXPECT_EQ(account->TotalCode_EDT->GetText(), "61");
    EXPECT_EQ(account->AssistantCode_EDT->GetText(), "2");
}

TEST_F(AccountSelector, WhileTheChartCannotBeReadTheCodesStandAsTyped)
{
    db.failStatement(1, TFault::ConnectionLost);
    account->SetCodes("77", "8", "9");
    EXPECT_FALSE(name().isEmpty());
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_EQ(account->TotalCode(), 77);
    db.failStatement(0);
    EXPECT_EQ(account->TotalCode(), 0); // read again, and not there
    db.failStatement(1, TFault::ConnectionLost);
    account->SetCodes("61", "", "");
    account->AssistantCode_EDT->setFocus();
    db.failStatement(1, TFault::ConnectionLost);
    messages.take();
    Keys::press(&screen, Qt::Key_F2);
    EXPECT_EQ(messages.take(), QStringList{"MsgDatabaseError()"});
}

TEST_F(AccountSelector, WithoutAccountsThePickerTellsWhereTheyComeFrom)
{
    db.run("delete from AccountAssistant");
    const auto shown = [](QWidget *picker) {
        auto *label = Keys::find<QLabel>(picker, "NoAccounts_LBL");
        return label->isVisible() ? label->text() : QString();
    };
    account->SetCodes("61", "0", "0");
    account->AssistantCode_EDT->setFocus();
    pick([&](QWidget *picker) {
        EXPECT_TRUE(shown(picker).startsWith(u"حساب کل 61 هیچ حساب معینی ندارد."_s))
            << shown(picker).toStdString();
        EXPECT_TRUE(shown(picker).contains(u"حسابداری"_s));
        EXPECT_FALSE(picker->findChild<QTableView *>()->isVisible());
        Keys::picture(picker, "account_picker_without_accounts");
        Keys::press(picker, Qt::Key_Escape);
    });
    account->TotalCode_EDT->setFocus();
    pick([&](QWidget *picker) {
        EXPECT_EQ(shown(picker), QString());
        Keys::type(Keys::child(picker, "Search_EDT"), "nobody");
        EXPECT_TRUE(
            Keys::waitFor([&] { return picker->findChild<QTableView *>()->model()->rowCount() == 0; }));
        EXPECT_EQ(shown(picker), QString()) << "it is the search that finds none";
    });
    db.run("delete from AccountTotal");
    pick([&](QWidget *picker) {
        EXPECT_TRUE(shown(picker).startsWith(u"هنوز هیچ حسابی"_s));
        Keys::press(picker, Qt::Key_Escape);
    });
}
