#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/ScriptedRecovery.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "staff/StaffGet_UNT.h"
#include "staff/Staff_DM_UNT.h"

#include <QTabWidget>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// Shows texts as texts where a test fails.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

/// A register with three groups: all (0), office (1) and production (2).
class StaffScreens : public testing::Test {
protected:
    StaffScreens()
    {
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", u"مریم کاتب"_s, true, true});
        db.run("insert into StaffGroup(Code,Name) values(1,N'اداری')");
        db.run("insert into StaffGroup(Code,Name) values(2,N'تولید')");
        Staff_DM = new TStaff_DM(nullptr);
    }
    ~StaffScreens() override
    {
        delete Staff_DM;
        Staff_DM = nullptr;
        UserInfo = {};
    }

    /// An employee with the least that a stored one has; `more` sets columns: "CardNumber='5', IsMarried=1".
    void add(int code, const QString &name, const QString &lastName, const QString &more = {})
    {
        db.run(
            u"insert into Staff(Code,StaffGroup,Name,LastName,PersonnelCode,InsuranceNumber,CardNumber,LeaveDate) "
            "values(%1,1,N'%2',N'%3','0','','','')"_s.arg(code)
                .arg(name, lastName));
        if (!more.isEmpty())
            db.run(u"update Staff set %1 where Code=%2"_s.arg(more).arg(code));
    }
    void setPicture(int code, const QByteArray &bytes)
    {
        db.connection().execute(
            TStatement("update Staff set Picture=").value(bytes).sql(" where Code=").integer(code));
    }
    void addMember(int id, int staff, const QString &name, const QString &table = "StaffFamily")
    {
        db.run(
            u"insert into %1(ID,StaffCode,Type,Name,Sex,InsuranceNumber,BirthDate,Death,DeathDate,Comment) "
            "values(%2,%3,1,N'%4',0,'','1390/01/05',0,'','')"_s.arg(table)
                .arg(id)
                .arg(staff)
                .arg(name));
    }
    QString value(const QString &column, int code)
    {
        return db.text(u"select %1 from Staff where Code=%2"_s.arg(column).arg(code));
    }
    QString locks() { return db.rows("select Code, Status, Com_Index from CodeLock_TBL order by Code"); }
    QString saved() { return db.rows("select ID, StaffCode, Name from StaffFamily order by ID"); }
    QString working() { return db.rows("select ID, StaffCode, Name from tmpStaffFamily order by ID"); }

    static std::unique_ptr<TStaffGet_FRM> newEditor(int group = 1)
    {
        return std::make_unique<TStaffGet_FRM>(cspStaff, false, QString::number(group));
    }
    static std::unique_ptr<TStaffGet_FRM> editorOf(int code)
    {
        return std::make_unique<TStaffGet_FRM>(cspStaff, code, fmEdit, false);
    }
    static int open(TBaseEditor &editor, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return editor.exec(); },
                              [&](QWidget *screen) {
                                  Keys::waitFor([&] { return screen->isActiveWindow(); });
                                  work();
                              });
    }
    /// Turns to the page that the input stands on, by its key.
    static void turnTo(TStaffGet_FRM &editor, QWidget *input)
    {
        for (int page = 0; page < editor.Staff_PC->count(); ++page)
            if (editor.Staff_PC->widget(page)->isAncestorOf(input) && page != editor.Staff_PC->currentIndex())
                Keys::press(&editor, Qt::Key(Qt::Key_1 + page), Qt::ControlModifier);
        ASSERT_TRUE(input->isVisibleTo(&editor)) << input->objectName().toStdString();
    }
    static void type(TStaffGet_FRM &editor, TSmartEdit_ZLM *input, const QString &text)
    {
        turnTo(editor, input);
        Keys::retype(input, text);
    }
    static void choose(TStaffGet_FRM &editor, TSmartComboBox_ZLM *input, int position)
    {
        turnTo(editor, input);
        input->setFocus();
        Keys::press(&editor, Qt::Key_Home);
        for (int i = 0; i < position; ++i)
            Keys::press(&editor, Qt::Key_Down);
    }
    static void tick(TStaffGet_FRM &editor, TSmartCheckBox_ZLM *box)
    {
        turnTo(editor, box);
        box->setFocus();
        Keys::press(&editor, Qt::Key_Space);
    }
    static void press(QWidget &screen, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Keys::press(&screen, key, modifiers);
    }
    /// The least that a new employee needs.
    static void fill(TStaffGet_FRM &editor, const QString &name = u"رضا"_s,
                     const QString &lastName = u"کریمی"_s)
    {
        choose(editor, editor.StaffGroup_CMB, 1);
        type(editor, editor.Name_EDT, name);
        type(editor, editor.LastName_EDT, lastName);
    }
    /// Saves and expects that it was refused: the message, the page and the focus.
    void refused(TStaffGet_FRM &editor, const QString &message, int page, QWidget *focus)
    {
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(message));
        EXPECT_EQ(editor.Staff_PC->currentIndex(), page) << message.toStdString();
        EXPECT_EQ(editor.focusWidget(), focus)
            << message.toStdString() << ": "
            << (editor.focusWidget() ? editor.focusWidget()->objectName().toStdString() : "nothing");
    }

    const QString savedMessage = u"MSGCompeletedSuccessfully(ذخيره سازي )"_s;
    const QString notSavedMessage = u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s;

    TestDatabase db;
    ScriptedMessages messages;
    ScriptedRecovery recovery;
};
