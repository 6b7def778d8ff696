#include "interface/Host.h"

#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"
#include "support/TestUser.h"

#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <cstring>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What an entry asks, shows and leaves.
struct TEntry {
    const char *name;
    int part; ///< whose right 6 it asks; 0: none asked by the entry
    const char *screen;
    TFormMode mode;         ///< of lists
    const char *dataModule; ///< lives while the screen is shown
};

const TEntry lists[] = {
    {"Open_TaxList", 802, "TTaxList_FRM", fmBrowse, "TTax_DM"},
    {"Open_WorkCalender", 803, "TCalender_List_FRM", fmBrowse, "TCalender_DM"},
    {"Open_FiscalList", 804, "TFiscalDeducation_List_FRM", fmBrowse, "TEntity_DM"},
    {"Open_DeductionList", 805, "TFiscalDeducation_List_FRM", fmBrowse, "TEntity_DM"},
    {"Open_CalculatingMethods", 813, "TCalcMethodList_FRM", fmBrowse, "TCalcMethod_DM"},
    {"Open_StaffList", 806, "TStaffList_FRM", fmBrowse, "TStaff_DM"},
    {"Select_Staff", 806, "TStaffList_FRM", fmSelect, "TStaff_DM"},
    {"Select_CalculatingMethods", 813, "TCalcMethodList_FRM", fmSelect, "TCalcMethod_DM"},
    {"Select_TaxInfo", 802, "TTaxList_FRM", fmSelect, "TTax_DM"},
    {"Select_FiscalList", 804, "TFiscalDeducation_List_FRM", fmSelect, "TEntity_DM"},
    {"Select_DeductionList", 804, "TFiscalDeducation_List_FRM", fmSelect, "TEntity_DM"},
    {"Select_FiscalDeducation", 804, "TFiscalDeducation_List_FRM", fmSelect, "TEntity_DM"},
};
const char *const others[] = {"Open_PayRollInfo", "Select_StaffGroup"};

QStringList entries()
{
    QStringList names;
    for (const TEntry &entry : lists)
        names << QString::fromLatin1(entry.name);
    for (const char *name : others)
        names << QString::fromLatin1(name);
    return names;
}

TEST_F(Interface, TheLibraryShowsItsFourteenEntriesAndNothingElse)
{
    QProcess nm;
    nm.start("nm", {"-D", "--defined-only", KETEBIONPAP_BIN "/Ketebionpap_ZLM.so"});
    ASSERT_TRUE(nm.waitForFinished());
    QStringList shown;
    const QStringList lines =
        QString::fromLatin1(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines)
        shown << line.section(u' ', -1);
    QStringList expected = entries();
    EXPECT_EQ(expected.size(), 14);
    shown.sort();
    expected.sort();
    EXPECT_EQ(shown, expected);
}

TEST_F(Interface, EachListAsksItsRightAndIsShownInItsMode)
{
    for (const TEntry &entry : lists) {
        QList<std::pair<int, int>> allButThis;
        for (const int part : {801, 802, 803, 804, 805, 806, 813, 815})
            for (const int right : {1, 2, 3, 6})
                if (part != entry.part || right != 6)
                    allButThis.append({part, right});
        holdOnly(allButThis);
        EXPECT_EQ(call(entry.name), 0) << entry.name;
        EXPECT_EQ(messages.take().size(), 1) << entry.name << ": only the host tells about the right";
        EXPECT_EQ(screens(), 0) << entry.name;

        holdOnly({{entry.part, 6}});
        EXPECT_EQ(shown(entry.name,
                        [&](QWidget *screen) {
                            EXPECT_EQ(screen->objectName(), entry.screen) << entry.name;
                            const auto *list = qobject_cast<TBaseDock_FRM *>(screen);
                            ASSERT_TRUE(list) << entry.name;
                            EXPECT_EQ(list->Mode(), entry.mode) << entry.name;
                            EXPECT_TRUE(dataModule(entry.dataModule)) << entry.name;
                            escape(screen);
                        }),
                  0)
            << entry.name;
        EXPECT_EQ(screens(), 0) << entry.name;
        EXPECT_FALSE(dataModule(entry.dataModule)) << entry.name;
        EXPECT_EQ(messages.take(), QStringList()) << entry.name;
    }
}

TEST_F(Interface, ARefusedEntryLeavesNoDataModuleButThatOfTheMethods)
{
    holdOnly({});
    for (const TEntry &entry : lists) {
        if (std::strcmp(entry.name, "Open_CalculatingMethods") == 0)
            continue;
        call(entry.name);
        EXPECT_FALSE(dataModule(entry.dataModule)) << entry.name;
    }
}

TEST_F(Interface, TwoOpenCallsTheFirstRefusedShareOneDataModule)
{
    holdOnly({});
    call("Open_CalculatingMethods");
    EXPECT_EQ(screens(), 0);
    const QPointer<QObject> left = dataModule("TCalcMethod_DM");
    ASSERT_TRUE(left);
    call("Open_CalculatingMethods");
    EXPECT_EQ(dataModule("TCalcMethod_DM"), left);
    holdOnly({{813, 6}});
    shown("Open_CalculatingMethods", [&](QWidget *screen) {
        EXPECT_EQ(dataModule("TCalcMethod_DM"), left);
        escape(screen);
    });
    EXPECT_FALSE(left);
    EXPECT_FALSE(dataModule("TCalcMethod_DM"));
}

TEST_F(Interface, AScreenGoesBeforeItsDataModule)
{
    for (const char *name :
         {"Open_CalculatingMethods", "Open_StaffList", "Select_CalculatingMethods", "Select_Staff"}) {
        QStringList gone;
        shown(name, [&](QWidget *screen) {
            const QString module = QLatin1String(name).contains("Staff"_L1) ? "TStaff_DM" : "TCalcMethod_DM";
            ASSERT_TRUE(dataModule(module)) << name;
            QObject::connect(screen, &QObject::destroyed, [&] { gone << "screen"; });
            QObject::connect(dataModule(module), &QObject::destroyed, [&] { gone << "data module"; });
            escape(screen);
        });
        EXPECT_EQ(gone, QStringList({"screen", "data module"})) << name;
    }
}

TEST_F(Interface, AScreenOpensWithoutTheLibraryThatWritesSpreadsheets)
{
    shown("Open_CalculatingMethods", escape);
    QFile maps(u"/proc/self/maps"_s);
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray loaded = maps.readAll();
    EXPECT_TRUE(loaded.contains("libKetebionpapHost"));
    EXPECT_FALSE(loaded.contains("xlsxwriter")) << "its loading makes each start longer";
}

TEST_F(Interface, ASelectTakesUpTheDataModuleOfARefusedOpenAndFreesIt)
{
    holdOnly({});
    call("Open_CalculatingMethods");
    const QPointer<QObject> left = dataModule("TCalcMethod_DM");
    ASSERT_TRUE(left);
    EXPECT_EQ(call("Select_CalculatingMethods"), 0);
    EXPECT_TRUE(left) << "a refused choice touches nothing";
    holdOnly({{813, 6}});
    shown("Select_CalculatingMethods", escape);
    EXPECT_FALSE(left);
}

TEST_F(Interface, ChoosingARecordAnswersItsCode)
{
    const struct {
        const char *name;
        int last;
        int beforeLast;
    } choices[] = {{"Select_CalculatingMethods", 8, 5}, {"Select_TaxInfo", 4, 3}, {"Select_Staff", 12, 11}};
    for (const auto &choice : choices) {
        EXPECT_EQ(shown(choice.name, enter), choice.last);
        EXPECT_EQ(shown(choice.name,
                        [](QWidget *screen) {
                            Keys::press(screen, Qt::Key_Up);
                            enter(screen);
                        }),
                  choice.beforeLast);
        EXPECT_EQ(shown(choice.name, escape), 0);
        EXPECT_EQ(shown(choice.name, [](QWidget *screen) { screen->close(); }), 0);
    }
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Interface, AnOpenedListIsNotChosenFrom)
{
    shown("Open_CalculatingMethods", [](QWidget *screen) {
        enter(screen);
        EXPECT_TRUE(screen->isVisible());
        EXPECT_FALSE(Keys::child(screen, "Select_BTN")->isEnabled());
        escape(screen);
    });
}

TEST_F(Interface, TheItemListsGetKindSelectTypeAndFilter)
{
    const struct {
        const char *name;
        int kind;
        int selectType;
        const char16_t *filter;
        QStringList expected;
    } calls[] = {
        {"Select_FiscalList", 0, 1, u"", {"0", "1", "0"}},
        {"Select_FiscalList", 0, 1, nullptr, {"0", "1", "0"}},
        {"Select_DeductionList", 0, 2, u"x", {"1", "2", "x"}},
        {"Select_FiscalList", 0, -7, u"روش ۱", {"0", "-7", u"روش ۱"_s}},
        {"Select_FiscalDeducation", 1, 4, u"", {"1", "4", ""}},
        {"Select_FiscalDeducation", 0, 5, nullptr, {"0", "5", ""}},
        {"Select_FiscalDeducation", 1, 3, u"%1 %s'", {"1", "3", "%1 %s'"}},
    };
    for (const auto &call : calls)
        EXPECT_EQ(shown(
                      call.name,
                      [&](QWidget *screen) {
                          const auto *list = qobject_cast<TBaseDock_FRM *>(screen);
                          ASSERT_TRUE(list);
                          QStringList parts;
                          for (int i = 0; i < 3; ++i)
                              parts << list->Parameter(i).toString();
                          EXPECT_EQ(parts, call.expected) << call.name;
                          EXPECT_TRUE(list->Parameter(3).isNull());
                          escape(screen);
                      },
                      call.kind, call.selectType, call.filter),
                  0);
    shown("Open_FiscalList", [](QWidget *screen) {
        EXPECT_EQ(qobject_cast<TBaseDock_FRM *>(screen)->Parameter(0), QVariant(0));
        escape(screen);
    });
    shown("Open_DeductionList", [](QWidget *screen) {
        EXPECT_EQ(qobject_cast<TBaseDock_FRM *>(screen)->Parameter(0), QVariant(1));
        escape(screen);
    });
}

TEST_F(Interface, TheSelectTypeTellsWhatAChosenItemAnswers)
{
    for (const int selectType : {1, 4, 5}) {
        EXPECT_EQ(shown("Select_FiscalList", takeLast, 0, selectType), 22) << selectType;
        EXPECT_EQ(shown("Select_DeductionList", takeLast, 0, selectType), 32) << selectType;
        EXPECT_EQ(shown("Select_FiscalDeducation", takeLast, 1, selectType, u"0"), 32) << selectType;
    }
    // Into the order 7 and into the output 9: the answer is no item's code.
    EXPECT_EQ(shown("Select_FiscalList", takeLast, 0, 2, u"7"), 406);
    EXPECT_EQ(shown("Select_DeductionList", takeLast, 0, 2, u"7"), 406);
    EXPECT_EQ(shown("Select_FiscalDeducation", takeLast, 0, 3, u"9"), 406);
    EXPECT_EQ(db.rows("select RecruitmentCode, ItemCode from tmpRecFiscal"), "7|22");
    EXPECT_EQ(db.rows("select Recruitmentcode, ItemCode from tmpRecDeduction"), "7|32");
    EXPECT_EQ(shown("Select_FiscalList", escape, 0, 2, u"7"), 0);
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Interface, WhatFollowsASemicolonInAFilterIsNoPartOfTheTarget)
{
    EXPECT_EQ(shown("Select_FiscalList", takeLast, 0, 2, u"7;8"), 406);
    EXPECT_EQ(db.rows("select RecruitmentCode, ItemCode from tmpRecFiscal"), "7|22");
    EXPECT_EQ(shown("Select_FiscalDeducation", takeLast, 1, 3, u"9;"), 406);
    EXPECT_EQ(db.rows("select OutPutCode, ItemCode from tmpstaffOutPutDetail"), "9|32");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Interface, TheDeductionsAreChosenWithTheRightOnEarningsAndKeptWithTheirOwn)
{
    holdOnly({{805, 6}});
    EXPECT_EQ(call("Select_DeductionList"), 0);
    EXPECT_EQ(call("Select_FiscalDeducation", 1), 0);
    EXPECT_EQ(messages.take().size(), 2);
    shown("Open_DeductionList", escape);
    holdOnly({{804, 6}});
    EXPECT_EQ(shown("Select_DeductionList", takeLast), 32);
    call("Open_DeductionList");
    EXPECT_EQ(messages.take().size(), 1);
    EXPECT_EQ(screens(), 0);
}

TEST_F(Interface, ThePayrollSettingsAskNoRightOfTheirOwnAndKeepTheirDataModule)
{
    // The editor itself asks for the right, and is not shown without it.
    holdOnly({});
    call("Open_PayRollInfo");
    EXPECT_EQ(screens(), 0);
    EXPECT_EQ(messages.take().size(), 1);
    const QPointer<QObject> kept = dataModule("TPayrollInfo_DM");
    ASSERT_TRUE(kept);
    holdOnly({{801, 6}});
    for (int i = 0; i < 2; ++i)
        shown("Open_PayRollInfo", [&](QWidget *screen) {
            EXPECT_EQ(screen->objectName(), "TPayrollInfoGet_FRM");
            const auto *editor = qobject_cast<TBaseEditor *>(screen);
            ASSERT_TRUE(editor);
            EXPECT_EQ(editor->Mode(), fmEdit);
            EXPECT_EQ(dataModule("TPayrollInfo_DM"), kept);
            escape(screen);
        });
    EXPECT_TRUE(kept);
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_EQ(screens(), 0);
}

TEST_F(Interface, TheStaffGroupsAreTheHostsOwnList)
{
    EXPECT_EQ(shown("Select_StaffGroup", escape), 0);
    EXPECT_EQ(shown("Select_StaffGroup",
                    [](QWidget *screen) {
                        Keys::press(screen, Qt::Key_End);
                        enter(screen);
                    }),
              2);
}

TEST_F(Interface, CallsFromElsewhereThanTheUserInterfaceThreadDoNothing)
{
    for (const QString &name : entries()) {
        int result = -2;
        std::thread other([&] { result = call(name.toLatin1().constData()); });
        other.join();
        EXPECT_EQ(result, 0) << name.toStdString();
    }
    EXPECT_EQ(screens(), 0);
}

TEST_F(Interface, AHostInPlainCFindsAndCallsEachEntry)
{
    QProcess host;
    host.start(KETEBIONPAP_BIN "/plain_host",
               QStringList{KETEBIONPAP_BIN "/Ketebionpap_ZLM.so"} + entries() + QStringList{"NoSuchEntry"});
    ASSERT_TRUE(host.waitForFinished());
    EXPECT_EQ(host.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(host.exitCode(), 0) << host.readAllStandardError().toStdString();
    QString expected;
    for (const QString &name : entries())
        expected += name + " 0\n";
    EXPECT_EQ(QString::fromLatin1(host.readAllStandardOutput()), expected + "NoSuchEntry -1\n");

    host.start(KETEBIONPAP_BIN "/plain_host", {KETEBIONPAP_BIN "/NoSuchModule.so", "Open_TaxList"});
    ASSERT_TRUE(host.waitForFinished());
    EXPECT_EQ(host.exitCode(), 1);
    EXPECT_NE(host.readAllStandardError(), "");
}

TEST_F(Interface, WithoutAConnectionEachEntryTellsTheUserAndReturns)
{
    TConnection *const connection = DM.ADOConnection1;
    DM.ADOConnection1 = nullptr;
    for (const QString &name : entries()) {
        EXPECT_EQ(call(name.toLatin1().constData()), 0) << name.toStdString();
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()")) << name.toStdString();
    }
    DM.ADOConnection1 = connection;
    EXPECT_EQ(screens(), 0);
}

TEST_F(Interface, OnAClosedConnectionARightCannotBeReadAndEachEntryTellsWhyItOpensNothing)
{
    db.connection().close();
    for (const TEntry &entry : lists) {
        EXPECT_EQ(call(entry.name), 0) << entry.name;
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()")) << entry.name;
    }
    EXPECT_EQ(screens(), 0);
}

QString contentOf(const QString &name)
{
    QFile file(QStringLiteral(KETEBIONPAP_SOURCE "/docs/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

TEST_F(Interface, TheDocumentQuotesTheExampleAsItIsBuilt)
{
    const QString document = contentOf("integration.md");
    for (const auto &[name, language] :
         {std::pair("host.c", "c"), {"services.h", "c"}, {"services.cpp", "cpp"}})
        EXPECT_TRUE(document.contains(u"```%1\n%2```\n"_s.arg(language, contentOf(u"example/"_s + name))))
            << name;
}

/// Runs the documents' example with settings of its own; its exit code and what it printed.
std::pair<int, QByteArray> runExample(const QTemporaryDir &home, const QString &database, const QString &user,
                                      const QByteArray &password)
{
    QFile file(home.filePath("password"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(password + '\n');
    file.close();
    QProcess host;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("XDG_CONFIG_HOME", home.path());
    host.setProcessEnvironment(variables);
    host.start(KETEBIONPAP_BIN "/example_host",
               {KETEBIONPAP_BIN "/Ketebionpap_ZLM.so", database, user, file.fileName()});
    EXPECT_TRUE(host.waitForFinished());
    EXPECT_EQ(host.exitStatus(), QProcess::NormalExit) << host.readAllStandardError().toStdString();
    return {host.exitCode(), host.readAllStandardOutput()};
}

TEST_F(Interface, TheExampleOfAHostLogsInOpensAndChooses)
{
    TUserInfo clerk{0, "ali", {}, false, true};
    ASSERT_EQ(SaveUser(clerk, "secret-b7qx2"), TLoginResult::Ok);
    EXPECT_TRUE(SetRightsOfUser(clerk.Code, {{cspTax, cpOpen}, {cspFiscal, cpOpen}}));
    if (db.connection().kind() != TConnection::Kind::Embedded)
        GTEST_SKIP() << "the example works on a file";
    const QTemporaryDir home;
    EXPECT_EQ(runExample(home, db.path(), "ali", "secret-b7qx2"),
              std::pair(0, QByteArray("tax table 4\nearning 22\n")));
    EXPECT_EQ(runExample(home, db.path(), "ali", "secret-2"), std::pair(1, QByteArray()));
}

TEST_F(Interface, TheExampleMakesAWorkstationAndAnAdministratorInANewDatabase)
{
    const QTemporaryDir home;
    const QString file = home.filePath("new.db");
    EXPECT_EQ(runExample(home, file, "sara", "short"), std::pair(1, QByteArray()));
    EXPECT_EQ(runExample(home, file, "sara", "secret-b7qx2"),
              std::pair(0, QByteArray("tax table 0\nearning 0\n")));
    TConnection made;
    made.openFile(file);
    EXPECT_EQ(
        made.scalar(TStatement("select count(*) from UserAccount where Name='sara' and IsAdmin=1")).toInt(),
        1);
    EXPECT_EQ(made.scalar(TStatement("select count(*) from Workstation")).toInt(), 1);
    // The next start is the same workstation and the same user.
    EXPECT_EQ(runExample(home, file, "sara", "secret-b7qx2").first, 0);
    EXPECT_EQ(made.scalar(TStatement("select count(*) from Workstation")).toInt(), 1);
    EXPECT_EQ(runExample(home, file, "reza", "secret-b7qx2").first, 1) << "there is a user now";
}

TEST_F(Interface, TheExampleWorksWhereTheProgramRegisteredTheWorkstation)
{
    if (db.connection().kind() != TConnection::Kind::Embedded)
        GTEST_SKIP() << "the example works on a file";
    TUserInfo clerk{0, "ali", {}, true, true};
    ASSERT_EQ(SaveUser(clerk, "secret-b7qx2"), TLoginResult::Ok);
    const QTemporaryDir home;
    // What the program does at its first start, with nobody to ask.
    const TIniOptions before = IniOptions;
    const auto back = qScopeGuard([&] { IniOptions = before; });
    IniOptions.load(home.filePath("ketebionpap/ketebionpap.ini"));
    ASSERT_TRUE(IniOptions.IsNew);
    ASSERT_TRUE(RegisterOwnWorkstation());
    EXPECT_EQ(db.rows("select Com_Index, Name from Workstation"), "1|" + OwnWorkstationName());
    EXPECT_EQ(runExample(home, db.path(), "ali", "secret-b7qx2").first, 0);
    EXPECT_EQ(db.text("select count(*) from Workstation"), "1");
    // And where the user gave it a name.
    db.run("update Workstation set Name='desk one'");
    ASSERT_TRUE(KeepWorkstationName("desk one"));
    EXPECT_EQ(runExample(home, db.path(), "ali", "secret-b7qx2").first, 0);
    EXPECT_EQ(db.text("select count(*) from Workstation"), "1");
    // And where another one has its number: the next free one.
    db.run("update Workstation set Name='someone else'");
    EXPECT_EQ(runExample(home, db.path(), "ali", "secret-b7qx2").first, 0);
    EXPECT_EQ(db.rows("select Com_Index, Name from Workstation order by Com_Index"),
              "1|someone else\n2|desk one");
}

TEST_F(Interface, TenThousandCallsFromPlainCInAnyOrderLeaveNothingBehind)
{
    QProcess host;
    host.start(KETEBIONPAP_BIN "/desk_host", {KETEBIONPAP_BIN "/Ketebionpap_ZLM.so", "10000", "10"});
    ASSERT_TRUE(host.waitForFinished(300000));
    EXPECT_EQ(host.exitStatus(), QProcess::NormalExit);
    const QByteArray said = host.readAllStandardOutput();
    EXPECT_EQ(host.exitCode(), 0) << said.toStdString() << host.readAllStandardError().toStdString();
    EXPECT_TRUE(said.startsWith("10000 calls, ")) << said.toStdString();
    EXPECT_GT(said.split(' ').value(2).toInt(), 500) << said.toStdString();
}

} // namespace
