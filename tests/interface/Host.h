#pragma once

#include "interface/calls.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// A host with a database, a user and the module, which it knows by its entries' names only.
class Interface : public testing::Test {
protected:
    Interface()
    {
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
        db.run("insert into CalcMethod(Code,Title) values(5,'five')");
        db.run("insert into CalcMethod(Code,Title) values(8,'eight')");
        for (const int code : {3, 4})
            db.run(u"insert into TaxMain(Code,Title) values(%1,'t%1')"_s.arg(code));
        for (const int code : {11, 12})
            db.run(u"insert into Staff(Code,Name,LastName,StaffGroup) values(%1,'n','l%1',0)"_s.arg(code));
        db.run("insert into StaffGroup(Code,Name) values(2,'two')");
        for (const int code : {21, 22})
            db.run(
                u"insert into Fiscal(Code,Title,GrpCode,Cost,CalcType) values(%1,'f%1',0,10,1)"_s.arg(code));
        for (const int code : {31, 32})
            db.run(u"insert into Deduction(Code,Title,GrpCode,Cost,CalcType) values(%1,'d%1',0,10,1)"_s.arg(
                code));
    }
    ~Interface() override
    {
        // What outlives a call is bound to the connection, which goes with the test.
        for (const char *name : {"TPayrollInfo_DM", "TCalcMethod_DM"})
            delete dataModule(name);
        UserInfo = {};
    }
    void SetUp() override { ASSERT_TRUE(Module()); }

    int call(const char *name, int kind = 0, int selectType = 1, const char16_t *filter = nullptr)
    {
        return call_entry(Module(), name, kind, selectType, filter);
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
    static void enter(QWidget *screen) { Keys::press(screen, Qt::Key_Return); }
    /// Chooses the last row of an item list, whose focus stands in the search.
    static void takeLast(QWidget *screen)
    {
        Keys::child(screen, "FiscalDeducation_List_GRD")->setFocus();
        enter(screen);
    }
    /// A user with these rights on these parts only.
    void holdOnly(const QList<std::pair<int, int>> &rights)
    {
        SeatUser(TUserInfo{7, "other", "other", false, true});
        db.run("delete from UserRight");
        for (const auto &[part, right] : rights)
            db.run(u"insert into UserRight(UserCode,SoftwarePart,Permission) values(7,%1,%2)"_s.arg(part).arg(
                right));
    }
    /// The data module of this class, null when none lives.
    static QObject *dataModule(const QString &name)
    {
        for (QObject *child : qApp->children())
            if (name == QString::fromLatin1(child->metaObject()->className()))
                return child;
        return nullptr;
    }
    /// Screens that are there, shown or not.
    static int screens()
    {
        int count = 0;
        for (const QWidget *widget : QApplication::topLevelWidgets())
            count += qobject_cast<const QDialog *>(widget) ? 1 : 0;
        return count;
    }

    /// The module as any host loads it.
    static void *Module()
    {
        static void *const loaded = load_module(KETEBIONPAP_BIN "/Ketebionpap_ZLM.so");
        return loaded;
    }

    TestDatabase db;
    ScriptedMessages messages;
};
