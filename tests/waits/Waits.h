#pragma once

#include "support/Keys.h"
#include "support/PlayedLine.h"
#include "support/ScriptedMessages.h"
#include "support/ScriptedRecovery.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"
#include "support/TurnWatch.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/database/AnswerWait.h"
#include "staff/StaffGet_UNT.h"
#include "staff/StaffList_UNT.h"
#include "staff/Staff_DM_UNT.h"

#include <QLabel>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// The employees behind a line that the test plays.
class Waits : public testing::Test {
public:
    static QWidget *panel()
    {
        for (QWidget *widget : QApplication::allWidgets()) {
            if (widget->objectName() == "Wait_PNL" && widget->isVisible())
                return widget;
        }
        return nullptr;
    }
    /// Presses keys as a user does, into whatever window is in front.
    static void pressInFront(Qt::Key key, const QString &text = {})
    {
        QWidget *front = QApplication::activeModalWidget() ? QApplication::activeModalWidget()
                                                           : QApplication::activeWindow();
        ASSERT_TRUE(front);
        QTest::sendKeyEvent(QTest::Click, front->windowHandle(), key, text, Qt::NoModifier);
    }

protected:
    Waits()
    {
        IniOptions.Com_Index = 1;
        SeatUser(TUserInfo{1, "clerk", u"مریم کاتب"_s, true, true});
        db.run("insert into StaffGroup(Code,Name) values(1,N'اداری')");
    }
    ~Waits() override
    {
        play->speak();
        delete Staff_DM;
        Staff_DM = nullptr;
        UserInfo = {};
    }
    void employees(int count)
    {
        db.connection().BeginTrans();
        for (int code = 1; code <= count; ++code)
            db.run(
                u"insert into Staff(Code,StaffGroup,Name,LastName,PersonnelCode,InsuranceNumber,CardNumber,LeaveDate) "
                "values(%1,1,N'نام %1',N'نشان %1','0','','','')"_s.arg(code));
        db.connection().CommitTrans();
    }
    /// From here on the database is behind the line.
    void goBehindLine()
    {
        const QString file = db.path();
        db.connection().close();
        db.connection().openEngine(PlayedLine::engine(file, play));
        Staff_DM = new TStaff_DM(nullptr);
        watcher.openFile(file);
    }
    /// As somebody else sees it.
    QString stored(const QString &sql) { return watcher.scalar(TStatement(sql)).toString(); }
    /// Does this once while a request is waited for and the panel is shown.
    void whenPanel(const std::function<void()> &work)
    {
        QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this, work = work] {
            if (!AnswerWait().isWaiting() || !panel())
                return;
            forgetPanel();
            work();
        });
        m_poll.start(5);
    }

    void forgetPanel()
    {
        m_poll.stop();
        m_poll.disconnect();
    }

    TestDatabase db{TestDatabase::FileAlways};
    TConnection watcher;
    ScriptedMessages messages;
    ScriptedRecovery recovery;
    std::shared_ptr<LinePlay> play = std::make_shared<LinePlay>();

private:
    QTimer m_poll;
};
