#include "Story.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString question = u"پرسش"_s;
const QString warning = u"هشدار"_s;
const QString settings = u" اطلاعات پایه"_s;
const QString methods = u"ليست روش هاي محاسباتي"_s;
const QString method = u"روش محاسباتی"_s;

/// Two calculation methods, the second with a tax table.
class MethodsOnTheDesk : public Story {
protected:
    MethodsOnTheDesk()
    {
        db.run("insert into TaxMain(Code,Title) values(3,'table three')");
        db.run("insert into CalcMethod(Code,Title,Tax,OverTime,LeaveCeil,OutPut) values(1,'first',0,1,2,7)");
        db.run("insert into CalcMethod(Code,Title,Tax,TaxMainCode,OverTime,LeaveCeil,OutPut) "
               "values(2,'second',1,3,1,2,7)");
    }
    QString titles() { return db.rows("select Code, Title from CalcMethod order by Code"); }
};

/// Payroll settings that can be saved as they stand.
class SettingsOnTheDesk : public Story {
protected:
    SettingsOnTheDesk()
    {
        db.run("update PayrollInfo set Value='x' where Code between 6 and 30");
        for (const auto &[code, value] : QList<std::pair<int, QString>>{{11, "3"},
                                                                        {13, "1"},
                                                                        {15, "123456789012"},
                                                                        {16, "0"},
                                                                        {17, "0"},
                                                                        {18, ""},
                                                                        {19, "5"},
                                                                        {20, "mine"},
                                                                        {25, "0013542419"},
                                                                        {29, ""}})
            db.run(u"update PayrollInfo set Value='%1' where Code=%2"_s.arg(value).arg(code));
        db.run("insert into Fiscal(Code,Title) values(901,'earning')");
        item = db.text("select min(ID) from PayrollInfoDetail where Type=0");
    }
    QString item;
};

} // namespace

TEST_F(SettingsOnTheDesk, AnItemsCodeIsLookedUpWhenEscapeAndEnterSaveIt)
{
    db.run("update PayrollInfoDetail set UserCode=901");
    open("Open_PayRollInfo", settings);
    press({"ctrl+2"});
    press(QStringList(10, "Tab")); // behind ten inputs stands the grid
    press({"Home", "Return"});
    ASSERT_TRUE(comes(settings)) << "the item's screen";
    type("999");
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    press({"Return"});
    ASSERT_TRUE(comes(warning)) << "there is no such earning";
    press({"Return"});
    ASSERT_TRUE(comes(settings));
    EXPECT_EQ(db.text("select count(*) from PayrollInfoDetail where UserCode=999"), "0");
    db.run("update PayrollInfoDetail set UserCode=0");
    type("901");
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    press({"Return"});
    EXPECT_TRUE(becomes("select count(*) from PayrollInfoDetail where UserCode=901", "1"));
}

TEST_F(SettingsOnTheDesk, TheHeadOfficeIsNamedWhenEscapeAndEnterSaveItsNumber)
{
    open("Open_PayRollInfo", settings);
    press(QStringList(11, "Tab"));
    type("1");
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    press({"Return"});
    EXPECT_EQ(ends(), 0);
    EXPECT_EQ(db.text("select Value from PayrollInfo where Code=19"), "1");
    EXPECT_EQ(db.text("select Value from PayrollInfo where Code=20"), u" دفتر مرکزي "_s);
}

TEST_F(SettingsOnTheDesk, ThePersianNoDropsWhatWasTypedAndEscapeGoesOnEditing)
{
    open("Open_PayRollInfo", settings);
    type("210987654321");
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    press({"Escape"});
    ASSERT_TRUE(comes(settings)) << "cancelled: the editor stays";
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    desk.setLayout("ir");
    press({"Arabic_khah"}); // the "No" button's letter
    EXPECT_EQ(ends(), 0);
    EXPECT_EQ(db.text("select Value from PayrollInfo where Code=15"), "123456789012");
}

TEST_F(SettingsOnTheDesk, TheWindowsCloseButtonAsksLikeEscape)
{
    open("Open_PayRollInfo", settings);
    type("210987654321");
    press({"alt+F4"}); // the window manager's key of its button
    ASSERT_TRUE(comes(question));
    press({"Return"});
    EXPECT_EQ(ends(), 0);
    EXPECT_EQ(db.text("select Value from PayrollInfo where Code=15"), "210987654321");
}

TEST_F(MethodsOnTheDesk, ATaxTableThatIsNotThereIsToldInABalloonWhenEscapeAndEnterSaveIt)
{
    open("Open_CalculatingMethods", methods);
    press({"F5"});
    ASSERT_TRUE(comes(method));
    press({"Tab", "Tab", "Tab"});
    type("99");
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    const int windows = desk.shownWindows(); // list, editor, question
    press({"Return"});
    ASSERT_TRUE(comes(method)) << "the editor stays";
    EXPECT_TRUE(Desk::waitFor([&] { return desk.shownWindows() == windows; })) << "the balloon";
    EXPECT_EQ(db.text("select TaxMainCode from CalcMethod where Code=2"), "3");
    type("3");
    press({"Escape"});
    ASSERT_TRUE(comes(question));
    press({"Return"});
    ASSERT_TRUE(comes(methods));
    EXPECT_EQ(db.text("select TaxMainCode from CalcMethod where Code=2"), "3");
}

TEST_F(MethodsOnTheDesk, TheListHasTheKeyboardAgainWhenItsEditorCloses)
{
    open("Open_CalculatingMethods", methods);
    press({"Up", "F5"});
    ASSERT_TRUE(comes(method));
    press({"Tab"});
    type("changed");
    press({"F3"});
    ASSERT_TRUE(comes(methods));
    EXPECT_EQ(titles(), "1|changed\n2|second");
    press({"End", "F5"});
    ASSERT_TRUE(comes(method));
    press({"Escape"});
    ASSERT_TRUE(comes(methods)) << "nothing was changed, nothing is asked";
    press({"Escape"});
    EXPECT_EQ(ends(), 0);
}

TEST_F(MethodsOnTheDesk, ADeleteIsAskedForWithNoAsTheAnswerOfEnter)
{
    open("Open_CalculatingMethods", methods);
    press({"F7"});
    ASSERT_TRUE(comes(question));
    press({"Return"});
    ASSERT_TRUE(comes(methods));
    EXPECT_EQ(titles(), "1|first\n2|second");
    press({"F7"});
    ASSERT_TRUE(comes(question));
    desk.setLayout("ir");
    press({"Arabic_beh"}); // the "Yes" button's letter
    ASSERT_TRUE(comes(methods));
    EXPECT_TRUE(becomes("select count(*) from CalcMethod where Code=2", "0"));
    EXPECT_EQ(titles(), "1|first");
}

TEST_F(MethodsOnTheDesk, ARefusedSaveLeadsToTheInputOnItsPage)
{
    open("Open_CalculatingMethods", methods);
    press({"F4"});
    ASSERT_TRUE(comes(u"روش محاسباتي"_s));
    press({"Return"}); // from the code to the title
    type("new");
    press({"F3"});
    ASSERT_TRUE(comes(warning)) << "there is no overtime";
    press({"Return"});
    ASSERT_TRUE(comes(u"روش محاسباتي"_s));
    type("120");
    press({"F3"});
    ASSERT_TRUE(comes(methods));
    EXPECT_EQ(db.rows("select Title, OverTime from CalcMethod where Code=3"), "new|120");
}

TEST_F(MethodsOnTheDesk, AnAccessKeyLeadsToItsInputOnAPersianKeyboard)
{
    desk.setLayout("ir");
    open("Open_CalculatingMethods", methods);
    press({"F5"});
    ASSERT_TRUE(comes(method));
    press({"alt+Arabic_ain"}); // the title
    press({"ctrl+a", "Arabic_seen", "Arabic_lam", "Arabic_alef", "Arabic_meem", "F3"});
    ASSERT_TRUE(comes(methods));
    EXPECT_EQ(titles(), u"1|first\n2|سلام"_s);
}

TEST_F(MethodsOnTheDesk, EnterPicksTheRowThatTheArrowsChose)
{
    open("Select_CalculatingMethods", methods);
    press({"Up", "Return"});
    EXPECT_EQ(ends(), 0);
    EXPECT_EQ(out, "1");
}

TEST_F(Story, AGroupIsMadeOnAPersianKeyboardAndPicked)
{
    open("Select_StaffGroup", u"گروه"_s);
    desk.setLayout("ir");
    press({"F4"});
    ASSERT_TRUE(comes(u"گروه کارمندان"_s));
    press({"Arabic_ain", "Arabic_lam", "Farsi_yeh", "F3"});
    EXPECT_TRUE(becomes(u"select count(*) from StaffGroup where Name='علی'"_s, "1"));
    ASSERT_TRUE(comes(u"گروه"_s));
    press({"End", "Return"});
    EXPECT_EQ(ends(), 0);
    EXPECT_EQ(out, db.text(u"select Code from StaffGroup where Name='علی'"_s));
}

TEST_F(Story, AnEmployeeBeginsAtTheNameAndEnterLeadsOn)
{
    db.run("insert into StaffGroup(Code,Name) values(2,'workers')");
    db.run("insert into Staff(Code,StaffGroup,Name,LastName,PersonnelCode,InsuranceNumber,CardNumber) "
           "values(5,2,'a','b','0','5','5')");
    open("Open_StaffList", u""_s);
    press({"F5"});
    ASSERT_TRUE(comes(u" اطلاعات کارمندان"_s));
    type("ali");
    press({"Return"});
    type("rezai");
    press({"F3"});
    EXPECT_TRUE(becomes("select Name from Staff where Code=5", "ali"));
    EXPECT_EQ(db.text("select LastName from Staff where Code=5"), "rezai");
}
