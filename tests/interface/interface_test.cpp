#include "interface/calls.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QApplication>
#include <QDialog>
#include <QProcess>
#include <QSet>

#include <gtest/gtest.h>

#include <thread>

namespace {

const QStringList &entries()
{
    static const QStringList names = {"Open_CalculatingMethods", "Select_StaffGroup",
                                      "Select_CalculatingMethods"};
    return names;
}

void *module()
{
    static void *const loaded = load_module(KETEBIONPAP_BIN "/Ketebionpap_ZLM.so");
    return loaded;
}

/// A host with a database, a user and the module, which it knows by its entries' names only.
class Interface : public testing::Test {
protected:
    Interface()
    {
        IniOptions.Com_Index = 1;
        UserInfo = TUserInfo{1, "clerk", "clerk", true, true};
        db.run("insert into CalcMethod(Code,Title) values(5,'five')");
        db.run("insert into CalcMethod(Code,Title) values(8,'eight')");
    }
    ~Interface() override { UserInfo = {}; }
    void SetUp() override { ASSERT_TRUE(module()); }

    int call(const char *name, int kind = 0, int selectType = 1, const char16_t *filter = nullptr)
    {
        return call_entry(module(), name, kind, selectType, filter);
    }
    /// Calls an entry and works in the screen that it shows.
    int shown(const char *name, const std::function<void(QWidget *)> &work, int kind = 0, int selectType = 1,
              const char16_t *filter = nullptr)
    {
        return Keys::runModal([&] { return call(name, kind, selectType, filter); },
                              [&](QWidget *screen) {
                                  Keys::waitFor([&] { return screen->isActiveWindow(); });
                                  work(screen);
                              });
    }
    static void escape(QWidget *screen) { Keys::press(screen, Qt::Key_Escape); }
    /// A user with these rights on these parts only.
    void holdOnly(const QList<std::pair<int, int>> &rights)
    {
        UserInfo = TUserInfo{7, "other", "other", false, true};
        db.run("delete from UserRight");
        for (const auto &[part, right] : rights)
            db.run(QStringLiteral("insert into UserRight(UserCode,SoftwarePart,Permission) values(7,%1,%2)")
                       .arg(part)
                       .arg(right));
    }
    /// The data modules that live, by class name.
    static QStringList dataModules()
    {
        QStringList names;
        for (const QObject *child : qApp->children())
            if (QString::fromLatin1(child->metaObject()->className()).endsWith("_DM"))
                names << QString::fromLatin1(child->metaObject()->className());
        names.sort();
        return names;
    }
    static const QObject *dataModule(const QString &name)
    {
        for (const QObject *child : qApp->children())
            if (name == QString::fromLatin1(child->metaObject()->className()))
                return child;
        return nullptr;
    }
    static int screens()
    {
        int count = 0;
        for (const QWidget *widget : QApplication::topLevelWidgets())
            count += qobject_cast<const QDialog *>(widget) ? 1 : 0;
        return count;
    }

    TestDatabase db;
    ScriptedMessages messages;
};

TEST_F(Interface, TwoOpenCallsTheFirstRefusedShareOneDataModule)
{
    holdOnly({});
    call("Open_CalculatingMethods");
    EXPECT_EQ(screens(), 0);
    EXPECT_EQ(messages.take().size(), 1) << "only the host's own word about the right";
    const QPointer<const QObject> left = dataModule("TCalcMethod_DM");
    ASSERT_TRUE(left);
    call("Open_CalculatingMethods");
    EXPECT_EQ(dataModule("TCalcMethod_DM"), left);
    holdOnly({{813, 6}});
    shown("Open_CalculatingMethods", [&](QWidget *screen) {
        EXPECT_EQ(screen->objectName(), "TCalcMethodList_FRM");
        EXPECT_EQ(dataModule("TCalcMethod_DM"), left);
        escape(screen);
    });
    EXPECT_FALSE(left);
    EXPECT_EQ(dataModule("TCalcMethod_DM"), nullptr);
    EXPECT_EQ(screens(), 0);
}

TEST_F(Interface, ARefusedSelectMakesNoDataModuleAndAnswersNothing)
{
    holdOnly({{802, 6}, {813, 1}});
    EXPECT_EQ(call("Select_CalculatingMethods"), 0);
    EXPECT_EQ(dataModule("TCalcMethod_DM"), nullptr);
    EXPECT_EQ(screens(), 0);
}

TEST_F(Interface, ASelectTakesUpTheDataModuleOfARefusedOpenAndFreesIt)
{
    holdOnly({});
    call("Open_CalculatingMethods");
    const QPointer<const QObject> left = dataModule("TCalcMethod_DM");
    holdOnly({{813, 6}});
    EXPECT_EQ(shown("Select_CalculatingMethods",
                    [&](QWidget *screen) {
                        EXPECT_EQ(dataModule("TCalcMethod_DM"), left);
                        escape(screen);
                    }),
              0);
    EXPECT_FALSE(left);
}

TEST_F(Interface, ChoosingAMethodAnswersItsCodeAndLeavingAnswersNothing)
{
    EXPECT_EQ(
        shown("Select_CalculatingMethods", [](QWidget *screen) { Keys::press(screen, Qt::Key_Return); }), 8);
    EXPECT_EQ(shown("Select_CalculatingMethods",
                    [](QWidget *screen) {
                        Keys::press(screen, Qt::Key_Up);
                        Keys::press(screen, Qt::Key_Return);
                    }),
              5);
    EXPECT_EQ(shown("Select_CalculatingMethods", escape), 0);
    EXPECT_EQ(shown("Select_CalculatingMethods", [](QWidget *screen) { screen->close(); }), 0);
    EXPECT_EQ(dataModule("TCalcMethod_DM"), nullptr);
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(Interface, AnOpenListCanOnlyBeKeptNotChosenFrom)
{
    EXPECT_EQ(shown("Open_CalculatingMethods",
                    [](QWidget *screen) {
                        Keys::press(screen, Qt::Key_Return);
                        EXPECT_TRUE(screen->isVisible());
                        EXPECT_FALSE(Keys::child(screen, "Select_BTN")->isEnabled());
                        escape(screen);
                    }),
              0);
}

TEST_F(Interface, CallsFromElsewhereThanTheUserInterfaceThreadDoNothing)
{
    for (const QString &name : entries()) {
        int result = -2;
        std::thread other([&] { result = call(name.toLatin1().constData()); });
        other.join();
        EXPECT_EQ(result, 0) << name.toStdString();
    }
    EXPECT_EQ(dataModules(), QStringList());
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

} // namespace
