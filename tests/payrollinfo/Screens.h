#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"
#include "support/TestUser.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "payrollinfo/PayrollInfoGet_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

inline QString u(const char *text)
{
    return QString::fromUtf8(text);
}

/// Whether the input that a message stands at was on the screen when it was told.
class Witness : public TMessageService {
public:
    explicit Witness(ScriptedMessages &messages) : m_messages(messages) { SetMessageService(this); }
    ~Witness() override { SetMessageService(&m_messages); }
    TAnswer show(const TMessage &message) override
    {
        const auto *input = qobject_cast<QWidget *>(message.control.data());
        atShownInput = input && input->isVisible();
        return m_messages.show(message);
    }
    bool atShownInput = false;

private:
    ScriptedMessages &m_messages;
};

/// The payroll settings of a clerk who holds all rights.
class PayrollInfoEditor : public testing::Test {
protected:
    PayrollInfoEditor() : data(nullptr)
    {
        PayrollInfo_DM = &data;
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    }
    ~PayrollInfoEditor() override
    {
        PayrollInfo_DM = nullptr;
        UserInfo = {};
    }

    int show(const std::function<void(TPayrollInfoGet_FRM &)> &work)
    {
        TPayrollInfoGet_FRM screen(cspPayrollInfo, 0, fmEdit, false);
        return Keys::runModal([&] { return screen.exec(); }, [&](QWidget *) { work(screen); });
    }
    // Everything that saving asks for.
    static void fillAll(TPayrollInfoGet_FRM &screen)
    {
        screen.CaseNo_EDT->SetText("123456789012");
        screen.LeisureIns_EDT->SetText("3");
        screen.BranchCode_EDT->SetText("11");
        screen.StageCode_EDT->SetText("1");
        screen.OrganCode_EDT->SetText("77");
        screen.BranchNo_EDT->SetText("5");
        screen.PayerName_EDT->SetText(u("مریم"));
        screen.SignaturNameFirst_EDT->SetText(u("رضا"));
        screen.SignaturFamilyFirst_EDT->SetText(u("احمدی"));
        screen.SignaturIdNationalFirst_EDT->SetText("0013542419");
        screen.SignaturPositionFirst_EDT->SetText(u("مدیر مالی"));
    }
    /// A clerk with these rights on the payroll settings only.
    void holdOnly(const QList<int> &rights)
    {
        UserInfo.IsAdmin = false;
        SeatUser(UserInfo);
        for (const int right : rights)
            db.run(u"insert into UserRight(UserCode,SoftwarePart,Permission) values(1,801,%1)"_s.arg(right));
    }
    const QString saved = u"MSGCompeletedSuccessfully(ذخيره سازي )"_s;
    QString stored(int code)
    {
        return db.text(QString("select Value from PayrollInfo where Code=%1").arg(code));
    }

    TestDatabase db;
    ScriptedMessages messages;
    TPayrollInfo_DM data;
};

/// One fixed item, and an earning (901) and a deduction (902) to link it to.
class PayrollItem : public PayrollInfoEditor {
protected:
    PayrollItem()
    {
        earning = db.text("select min(ID) from PayrollInfoDetail where Type=0").toInt();
        deduction = db.text("select min(ID) from PayrollInfoDetail where Type=1").toInt();
        db.run("insert into Fiscal(Code,Title) values(901,'earning')");
        db.run("insert into Deduction(Code,Title) values(902,'deduction')");
    }
    int show(int id, int type, const std::function<void(TPayrollInfoDetail_FRM &)> &work)
    {
        TPayrollInfoDetail_FRM screen(cspPayrollInfo, type, fmEdit, id);
        return Keys::runModal([&] { return screen.exec(); }, [&](QWidget *) { work(screen); });
    }
    QString linkOf(int id)
    {
        return db.text(QString("select UserCode from PayrollInfoDetail where ID=%1").arg(id));
    }

    int earning = 0;
    int deduction = 0;
};
