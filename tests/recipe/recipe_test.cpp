#include "Bank.h"

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QCoreApplication>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto Yes = TAnswer::Yes;

/// The recipe of the documents, cooked: the list of banks with its editor, in real windows.
class Recipe : public testing::Test {
protected:
    Recipe()
    {
        SeatUser(TUserInfo{1, "clerk", "Clerk", true, true});
        db.run(
            "create table Bank(Code int not null primary key, Title nvarchar(50), Branch nvarchar(20), Active bit)");
    }
    ~Recipe() override { UserInfo = {}; }
    void open(const std::function<void(TBankList_FRM &)> &work)
    {
        TBank_DM data(nullptr);
        TBankList_FRM list(fmBrowse, data);
        Keys::runModal([&] { return list.exec(); }, [&](QWidget *) { work(list); });
    }
    void inEditor(QWidget *list, Qt::Key key, const std::function<void(QWidget *)> &work)
    {
        Keys::runModal(
            [&] {
                Keys::press(list, key);
                return 0;
            },
            work);
    }
    QString banks() { return db.rows("select Code, Title, Branch, Active from Bank order by Code"); }

    TestDatabase db;
    ScriptedMessages messages;
};

} // namespace

TEST_F(Recipe, ANewBankIsEnteredChangedAndDeletedOnTheKeyboard)
{
    open([&](TBankList_FRM &list) {
        inEditor(&list, Qt::Key_F4, [](QWidget *editor) {
            Keys::type(Keys::child(editor, "Title_EDT"), u"ملی"_s);
            Keys::type(Keys::child(editor, "Branch_EDT"), u"مرکزی"_s);
            Keys::press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(banks(), u"1|ملی|مرکزی|1"_s);
        inEditor(&list, Qt::Key_F5, [](QWidget *editor) {
            Keys::retype(Keys::child(editor, "Branch_EDT"), u"بازار"_s);
            Keys::find<TSmartCheckBox_ZLM>(editor, "Active_CHK")->click();
            Keys::press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(banks(), u"1|ملی|بازار|0"_s);
        messages.answer({Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(banks(), "");
    });
}

TEST_F(Recipe, AnEmptyTitleIsRequiredAndWhatWasTypedIsNotLostUnasked)
{
    open([&](TBankList_FRM &list) {
        inEditor(&list, Qt::Key_F4, [&](QWidget *editor) {
            Keys::type(Keys::child(editor, "Branch_EDT"), u"مرکزی"_s);
            Keys::press(editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList{u"MsgRequiredField(عنوان)"_s});
            messages.answer({TAnswer::Cancel});
            Keys::press(editor, Qt::Key_Escape);
            EXPECT_EQ(messages.take(), QStringList{"MsgNotSaved()"});
            EXPECT_TRUE(editor->isVisible());
            messages.answer({TAnswer::No});
            Keys::press(editor, Qt::Key_Escape);
        });
        EXPECT_EQ(banks(), "");
    });
}

TEST_F(Recipe, IsShorterThan150Lines)
{
    int lines = 0;
    for (const char *name : {"/docs/recipe/Bank.h", "/docs/recipe/Bank.cpp"}) {
        QFile file(QStringLiteral(KETEBIONPAP_SOURCE) + QString::fromLatin1(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        lines += int(file.readAll().count('\n'));
    }
    EXPECT_LT(lines, 150);
}
