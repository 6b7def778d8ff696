#include "host/services/Services.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"
#include "support/Keys.h"
#include "support/TestUser.h"

using enum TAnswer;

class GroupsOfEmployees : public Services {
protected:
    GroupsOfEmployees() { SeatUser(UserInfo); }
    QString groups() { return db.rows("select Code, Name from StaffGroup where Code > 0 order by Code"); }
    /// Runs an operation that opens a screen and works in it.
    static bool open(const std::function<bool()> &operation, const std::function<void(QWidget *)> &work)
    {
        return Keys::runModal([&] { return int(operation()); }, work) != 0;
    }
    static void type(QWidget *screen, const char *name)
    {
        Keys::retype(Keys::child(screen, "Name_EDT"), QString::fromUtf8(name));
    }
    void add(int code, const char *name)
    {
        db.run(QString("insert into StaffGroup(Code, Name) values(%1, N'%2')")
                   .arg(code)
                   .arg(QString::fromUtf8(name)));
    }
};

TEST_F(GroupsOfEmployees, ANewGroupGetsTheNextCode)
{
    add(4, "کارگاه");
    EXPECT_TRUE(open([] { return New_Group(cspStaffGroup); },
                     [&](QWidget *screen) {
                         EXPECT_EQ(Keys::find<TSmartEdit_ZLM>(screen, "Code_EDT")->GetText(), "5");
                         EXPECT_TRUE(
                             Keys::waitFor([&] { return Keys::child(screen, "Name_EDT")->hasFocus(); }));
                         EXPECT_EQ(db.rows("select Code, Status from CodeLock_TBL"), "5|815");
                         type(screen, "اداری");
                         Keys::picture(screen, "group_editor");
                         Keys::press(screen, Qt::Key_F3);
                     }));
    EXPECT_EQ(groups(), QString::fromUtf8("4|کارگاه\n5|اداری"));
    EXPECT_EQ(db.rows("select Code from CodeLock_TBL"), "");
    EXPECT_EQ(messages.all().last().operation, "MSGCompeletedSuccessfully");
}

TEST_F(GroupsOfEmployees, AGroupWithoutANameOrWithATakenOneIsNotSaved)
{
    add(1, "اداری");
    EXPECT_FALSE(open([] { return New_Group(cspStaffGroup); },
                      [&](QWidget *screen) {
                          Keys::press(screen, Qt::Key_F3);
                          EXPECT_EQ(messages.take(), QStringList(QString::fromUtf8("MsgRequiredField(نام)")));
                          type(screen, " اداری ");
                          Keys::press(screen, Qt::Key_F3);
                          EXPECT_TRUE(messages.take().last().startsWith("MsgRepeatedField("));
                          type(screen, "اداري");
                          Keys::press(screen, Qt::Key_F3);
                          EXPECT_TRUE(messages.take().last().startsWith("MsgRepeatedField("));
                          EXPECT_TRUE(messages.last().text.endsWith(QString::fromUtf8("اداری (کد 1)")));
                          EXPECT_TRUE(screen->isVisible());
                          messages.answer({No});
                          Keys::press(screen, Qt::Key_Escape);
                      }));
    EXPECT_EQ(groups(), QString::fromUtf8("1|اداری"));
}

TEST_F(GroupsOfEmployees, AGroupIsRenamed)
{
    add(1, "اداری");
    EXPECT_TRUE(open([] { return Edit_Group(cspStaffGroup, 1); },
                     [&](QWidget *screen) {
                         EXPECT_EQ(Keys::find<TSmartEdit_ZLM>(screen, "Name_EDT")->GetText(),
                                   QString::fromUtf8("اداری"));
                         type(screen, "فنی");
                         Keys::press(screen, Qt::Key_F3);
                     }));
    EXPECT_EQ(groups(), QString::fromUtf8("1|فنی"));
}

TEST_F(GroupsOfEmployees, KeepingTheOwnNameIsNoRepeat)
{
    add(1, "اداری");
    EXPECT_TRUE(open([] { return Edit_Group(cspStaffGroup, 1); },
                     [&](QWidget *screen) { Keys::press(screen, Qt::Key_F3); }));
    EXPECT_EQ(messages.take().size(), 1);
}

TEST_F(GroupsOfEmployees, AGroupDeletedWhileItsEditorIsOpenIsToldAndItsNameStaysAsTyped)
{
    add(1, "اداری");
    EXPECT_FALSE(open([] { return Edit_Group(cspStaffGroup, 1); },
                      [&](QWidget *screen) {
                          type(screen, "فنی");
                          db.run("delete from StaffGroup where Code = 1");
                          Keys::press(screen, Qt::Key_F3);
                          EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
                          EXPECT_TRUE(screen->isVisible());
                          EXPECT_EQ(Keys::find<TSmartEdit_ZLM>(screen, "Name_EDT")->GetText(),
                                    QString::fromUtf8("فنی"));
                          messages.answer({No});
                          Keys::press(screen, Qt::Key_Escape);
                      }));
    EXPECT_EQ(groups(), "");
}

TEST_F(GroupsOfEmployees, TheGroupOfAllIsNeitherChangedNorDeleted)
{
    EXPECT_FALSE(Edit_Group(cspStaffGroup, 0));
    EXPECT_FALSE(Delete_Group(cspStaffGroup, 0));
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:8()", "ShowSmartMessage:8()"}));
    EXPECT_EQ(db.text("select count(*) from StaffGroup where Code = 0"), "1");
}

TEST_F(GroupsOfEmployees, AGroupIsDeletedAfterTheQuestionAndTheLogSaysSo)
{
    add(1, "اداری");
    messages.answer({No, Yes});
    EXPECT_FALSE(Delete_Group(cspStaffGroup, 1));
    EXPECT_TRUE(Delete_Group(cspStaffGroup, 1));
    EXPECT_EQ(groups(), "");
    EXPECT_EQ(db.rows("select SoftwarePart, Permission, EventText from UserEvent"),
              QString::fromUtf8("815|3|اداری"));
    EXPECT_FALSE(messages.unansweredQuestions());
}

TEST_F(GroupsOfEmployees, AGroupWithEmployeesStays)
{
    add(1, "اداری");
    db.run("insert into Staff(Code, StaffGroup, Name) values(1, 1, 'x')");
    messages.answer({Yes});
    EXPECT_FALSE(Delete_Group(cspStaffGroup, 1));
    EXPECT_EQ(messages.take().last(), QString::fromUtf8("MsgHasSubRecords(گروه)"));
    EXPECT_EQ(groups(), QString::fromUtf8("1|اداری"));
}

TEST_F(GroupsOfEmployees, AGroupThatAnotherWorkstationEditsIsNotDeleted)
{
    add(1, "اداری");
    db.run("insert into CodeLock_TBL(Code, Status, Com_Index) values('1', 815, 2)");
    EXPECT_FALSE(Delete_Group(cspStaffGroup, 1));
    EXPECT_FALSE(Edit_Group(cspStaffGroup, 1));
    EXPECT_EQ(messages.take(),
              (QStringList{QString::fromUtf8("MSGInUse(گروه)"), QString::fromUtf8("MSGInUse(گروه)")}));
}

TEST_F(GroupsOfEmployees, WithoutTheRightNothingHappens)
{
    add(1, "اداری");
    UserInfo = TUserInfo{5, "clerk", {}, false, true};
    EXPECT_FALSE(New_Group(cspStaffGroup));
    EXPECT_FALSE(Edit_Group(cspStaffGroup, 1));
    EXPECT_FALSE(Delete_Group(cspStaffGroup, 1));
    EXPECT_EQ(messages.take(), (QStringList{"MsgNoPermission()", "MsgNoPermission()", "MsgNoPermission()"}));
    EXPECT_EQ(groups(), QString::fromUtf8("1|اداری"));
}

TEST_F(GroupsOfEmployees, AGroupIsPickedFromTheList)
{
    add(3, "اداری");
    add(4, "کارگاه");
    int picked = 0;
    open(
        [&] {
            picked = Select_GroupList(cspStaffGroup, {});
            return true;
        },
        [&](QWidget *screen) {
            auto *list = qobject_cast<TGroupList_FRM *>(screen);
            ASSERT_TRUE(list);
            Keys::picture(screen, "group_list");
            Keys::type(list->General_Search->Search_EDT(), QString::fromUtf8("اداري"));
            Keys::press(screen, Qt::Key_Down);
            Keys::press(screen, Qt::Key_Return);
        });
    EXPECT_EQ(picked, 3);
}

TEST_F(GroupsOfEmployees, CancellingThePickIsNoGroup)
{
    add(3, "اداری");
    int picked = -1;
    open(
        [&] {
            picked = Select_GroupList(cspStaffGroup, {});
            return true;
        },
        [](QWidget *screen) { Keys::press(screen, Qt::Key_Escape); });
    EXPECT_EQ(picked, 0);
}

TEST_F(GroupsOfEmployees, ADatabaseErrorEndsAnOperationWithItsMessage)
{
    db.failStatement(1, TFault::ConnectionLost);
    EXPECT_FALSE(Delete_Group(cspStaffGroup, 1));
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
}

class GroupKinds : public Services {
protected:
    GroupKinds() { SeatUser(UserInfo); }
};

TEST_F(GroupKinds, EachPartHasItsOwnGroups)
{
    EXPECT_EQ(GroupKindOf(cspStaffGroup)->table, "StaffGroup");
    EXPECT_EQ(GroupKindOf(cspFiscalGrp)->table, "FiscalGrp");
    EXPECT_EQ(GroupKindOf(cspDeductionGrp)->table, "DeductionGrp");
    EXPECT_EQ(GroupKindOf(cspPerson)->table, "PersonGroup");
    EXPECT_EQ(GroupKindOf(cspTax), nullptr);
    EXPECT_FALSE(New_Group(cspTax));
    EXPECT_EQ(Select_GroupList(cspTax, {}), 0);
    EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:7()"));
}

TEST_F(GroupKinds, TheDeductionsThemselvesNameTheirGroupsToo)
{
    db.run("insert into DeductionGrp(Code, Name) values(2, 'd')");
    db.run("insert into FiscalGrp(Code, Name) values(2, 'f')");
    messages.answer({Yes});
    EXPECT_TRUE(Delete_Group(cspDeduction, 2));
    EXPECT_EQ(db.rows("select Name from DeductionGrp where Code = 2"), "");
    EXPECT_EQ(db.rows("select Name from FiscalGrp where Code = 2"), "f");
}

class Pickers : public Services {
protected:
    void TearDown() override { RegisterEntityPicker(cspTax, {}); }
};

TEST_F(Pickers, WithoutAPickerThereIsNoneToPick)
{
    EXPECT_EQ(Select_Entity(cspTax, {}, false), 0);
    EXPECT_EQ(Open_FiscalDeductionList(cspFiscal, 4, {}), 0);
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:7()", "ShowSmartMessage:7()"}));
}

TEST_F(Pickers, ARegisteredPickerAnswers)
{
    QString asked;
    RegisterEntityPicker(cspTax, [&](const QString &text) {
        asked = text;
        return 12;
    });
    EXPECT_EQ(Select_Entity(cspTax, "words", false), 12);
    EXPECT_EQ(asked, "words");
    EXPECT_EQ(Open_FiscalDeductionList(cspTax, 4, "more"), 12);
    EXPECT_EQ(asked, "more");
    RegisterEntityPicker(
        cspTax, [](const QString &) -> int { throw TDatabaseError(TFault::ConnectionLost, "gone"); });
    EXPECT_EQ(Select_Entity(cspTax, {}, false), 0);
    EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
}
