#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"

#include "calcmethod/CalcMethodGet_UNT.h"
#include "calcmethod/CalcMethodList_UNT.h"
#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QApplication>
#include <QLabel>
#include <QTabWidget>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

/// A company with two tax tables, and a clerk who holds all rights.
class CalcMethodScreens : public testing::Test {
protected:
    CalcMethodScreens()
    {
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
        dm = std::make_unique<TCalcMethod_DM>(nullptr);
        CalcMethod_DM = dm.get();
        db.run(u"insert into TaxMain(Code,Title) values(3,'جدول سوم')"_s);
        db.run("insert into TaxMain(Code,Title) values(4,'table four')");
    }
    ~CalcMethodScreens() override
    {
        CalcMethod_DM = nullptr;
        UserInfo = {};
    }

    void add(int code, const QString &title, const QString &columns = {}, const QString &values = {})
    {
        db.run(u"insert into CalcMethod(Code,Title%1) values(%2,'%3'%4)"_s.arg(columns).arg(code).arg(
            title, values));
    }
    /// A clerk with these rights on the calculation methods only.
    void holdOnly(const QList<int> &rights)
    {
        SeatUser(TUserInfo{7, "other", "other", false, true});
        db.run("delete from UserRight");
        for (const int right : rights)
            db.run(u"insert into UserRight(UserCode,SoftwarePart,Permission) values(7,813,%1)"_s.arg(right));
    }
    QString titles() { return db.rows("select Code, Title from CalcMethod order by Code"); }
    QString locks() { return db.rows("select Code, Status, Com_Index from CodeLock_TBL order by Code"); }

    /// Shows a screen and works in it; an editor that is left open with changes is told not to save them.
    int open(QDialog &screen, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return screen.exec(); },
                              [&](QWidget *shown) {
                                  Keys::waitFor([&] { return shown->isActiveWindow(); });
                                  work();
                                  const auto *editor = qobject_cast<TBaseEditor *>(shown);
                                  if (editor && editor->isVisible() && !editor->IsSaved())
                                      messages.answer({TAnswer::No});
                              });
    }
    static void check(QAbstractButton *box, bool checked)
    {
        if (box->isChecked() != checked) {
            box->setFocus();
            Keys::press(box, Qt::Key_Space);
        }
        EXPECT_EQ(box->isChecked(), checked) << box->objectName().toStdString();
    }

    TestDatabase db;
    ScriptedMessages messages;
    std::unique_ptr<TCalcMethod_DM> dm;
};

/// The editor of one method.
class CalcMethodEditor : public CalcMethodScreens {
protected:
    std::unique_ptr<TCalcMethodGet_FRM> newEditor()
    {
        return std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, false, QString());
    }
    std::unique_ptr<TCalcMethodGet_FRM> editorOf(int code)
    {
        return std::make_unique<TCalcMethodGet_FRM>(cspCalcMethod, code, fmEdit, false);
    }
    /// The least that a new method needs.
    static void fill(TCalcMethodGet_FRM &editor, const QString &title = "m")
    {
        Keys::retype(editor.Title_EDT, title);
        Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
        Keys::retype(editor.OverTime_EDT, "120");
        Keys::press(&editor, Qt::Key_1, Qt::ControlModifier);
    }
    const QString saved = u"MSGCompeletedSuccessfully(ذخيره سازي )"_s;
    const QString notSaved = u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s;
};
