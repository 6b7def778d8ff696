#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "payrollinfo/PayrollInfoDetail_UNT.h"
#include "payrollinfo/PayrollInfoGet_UNT.h"
#include "payrollinfo/PayrollInfo_DM_UNT.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

class PayrollInfoEditor : public testing::Test {
protected:
    PayrollInfoEditor() : data(nullptr)
    {
        PayrollInfo_DM = &data;
        UserInfo = TUserInfo{1, "clerk", "clerk", true, true};
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
    QString stored(int code)
    {
        return db.text(QString("select Value from PayrollInfo where Code=%1").arg(code));
    }

    TestDatabase db;
    ScriptedMessages messages;
    TPayrollInfo_DM data;
};

} // namespace

TEST_F(PayrollInfoEditor, AllInputsAreStoredUnderTheirCodesAndReadBack)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.FactoryName_EDT->SetText(u("کارگاه 'نمونه'"));
        screen.FactoryAdrr_EDT->SetText(QString(200, QChar(0x06CC)));
        screen.EmployeeTitle_CMB->setCurrentIndex(1);
        screen.LegalTitle_CMB->setCurrentIndex(5);
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList{u("MSGCompeletedSuccessfully(ذخيره سازي )")});
        EXPECT_TRUE(screen.IsSaved());
    });
    EXPECT_EQ(stored(7), u("کارگاه 'نمونه'"));
    EXPECT_EQ(stored(9), QString(200, QChar(0x06CC)));
    EXPECT_EQ(stored(15), "123456789012");
    EXPECT_EQ(stored(16), "1");
    EXPECT_EQ(stored(17), "5");
    EXPECT_EQ(stored(26), u("مدیر مالی"));
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_EQ(screen.FactoryName_EDT->GetText(), u("کارگاه 'نمونه'"));
        EXPECT_EQ(screen.EmployeeTitle_CMB->currentText(), u("حقوقی"));
        EXPECT_EQ(screen.LegalTitle_CMB->currentText(), u("بخش خصوصی"));
        EXPECT_TRUE(screen.LegalTitle_CMB->isVisible());
        EXPECT_TRUE(screen.IsSaved());
        Keys::picture(&screen, "payrollinfo-company");
        Keys::press(&screen, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(screen.Payroll_PC->currentIndex(), 1);
        Keys::picture(&screen, "payrollinfo-taxoffice");
    });
}

TEST_F(PayrollInfoEditor, AValueBelowCodeSixShiftsEveryValueOnReading)
{
    db.run("update PayrollInfo set Value='six' where Code=6");
    db.run("insert into PayrollInfo(Code,Value) values(5,'five')");
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_EQ(screen.FactoryID_EDT->GetText(), "five");
        EXPECT_EQ(screen.FactoryName_EDT->GetText(), "six");
    });
}

TEST_F(PayrollInfoEditor, SavingAsksForEachInputInOrderAndStopsAtTheFirst)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        for (TSmartEdit_ZLM *input : {screen.LeisureIns_EDT, screen.StageCode_EDT})
            input->Clear();
        const auto save = [&] {
            Keys::press(&screen, Qt::Key_F3);
            return messages.take();
        };
        screen.CaseNo_EDT->SetText("12345678901");
        EXPECT_EQ(save(), QStringList{u("ShowTooltipMessage(شماره پرونده نمي تواند کوچکتر از 12 رقم باشد)")});
        EXPECT_TRUE(screen.CaseNo_EDT->hasFocus());
        screen.CaseNo_EDT->SetText("123456789012");

        screen.NationalNo_EDT->SetText("1111111111");
        EXPECT_EQ(messages.take().size() + save().size(), 1) << "one balloon, nothing else";
        EXPECT_EQ(messages.last().number, 10310);
        EXPECT_EQ(messages.last().displayTime, 3000);
        EXPECT_TRUE(screen.NationalNo_EDT->hasFocus());
        screen.NationalNo_EDT->Clear();

        const auto expectRequired = [&](const char *caption, TSmartEdit_ZLM *input, const QString &value,
                                        int page) {
            screen.Payroll_PC->setCurrentIndex(1 - page);
            EXPECT_EQ(save(), QStringList{u("MsgRequiredField(") + u(caption) + ')'});
            EXPECT_TRUE(input->hasFocus()) << caption;
            EXPECT_EQ(screen.Payroll_PC->currentIndex(), page) << caption;
            input->SetText(value);
        };
        expectRequired("حق بيمه بيکاري", screen.LeisureIns_EDT, "3", 0);
        expectRequired("کد شعبه", screen.BranchCode_EDT, "1", 0);
        expectRequired("کد مرحله جاري", screen.StageCode_EDT, "1", 0);
        expectRequired("کد سازمان", screen.OrganCode_EDT, "1", 0);
        expectRequired("شماره شعبه", screen.BranchNo_EDT, "2", 0);
        expectRequired("نام پرداخت کننده", screen.PayerName_EDT, "x", 1);
        expectRequired("نام صاحب امضا اول", screen.SignaturNameFirst_EDT, "x", 1);
        expectRequired("نام خانوادگي صاحب امضا اول", screen.SignaturFamilyFirst_EDT, "x", 1);
        expectRequired("شماره ملي صاحب امضا اول", screen.SignaturIdNationalFirst_EDT, "0013542419", 1);
        expectRequired("سمت صاحب امضا اول", screen.SignaturPositionFirst_EDT, "x", 1);
        EXPECT_TRUE(screen.PayerFamily_EDT->IsEmpty()) << "the payer's family name is never asked for";
        EXPECT_EQ(save(), QStringList{u("MSGCompeletedSuccessfully(ذخيره سازي )")});
    });
}

TEST_F(PayrollInfoEditor, EachInputHasItsCaptionItsLimitAndItsChoices)
{
    const std::pair<const char *, QString> captions[] = {
        {"FactoryID_EDT", u"  شما&ره کارگاه :"_qs},
        {"FactoryName_EDT", u"  نام &کارگاه :"_qs},
        {"EmployerName_EDT", u"  ن&ام کارفرما :"_qs},
        {"FactoryAdrr_EDT", u"  نشانی کار&گاه :"_qs},
        {"Ejtemae_EDT", u"  نام شعبه &تامین اجتماعی :"_qs},
        {"LeisureIns_EDT", u"  &حق بیمه بیکاری :"_qs},
        {"BranchCode_EDT", u"  کد شع&به :"_qs},
        {"StageCode_EDT", u"  کد مر&حله جاری :"_qs},
        {"OrganCode_EDT", u"  کد &سازمان :"_qs},
        {"CaseNo_EDT", u"  &شماره پرونده :"_qs},
        {"EmployeeTitle_CMB", u"  &عنوان کارفرما :"_qs},
        {"LegalTitle_CMB", u"  عن&وان شخص حقوقی :"_qs},
        {"NationalNo_EDT", u"  ش&ماره ملی کارفرما :"_qs},
        {"BranchNo_EDT", u"  شماره شعب&ه :"_qs},
        {"BranchName_EDT", u"  نام شعبه :"_qs},
        {"PayerName_EDT", u"  &نام پرداخت کننده :"_qs},
        {"PayerFamily_EDT", u"  نام &خانوادگی پرداخت کننده :"_qs},
        {"SignaturNameFirst_EDT", u"  نام صاحب امضا اول :"_qs},
        {"SignaturFamilyFirst_EDT", u"  نام خانوادگی صاحب امضا اول :"_qs},
        {"SignaturIdNationalFirst_EDT", u"  شماره ملی صاحب امضا اول :"_qs},
        {"SignaturPositionFirst_EDT", u"  سمت صاحب امضا اول :"_qs},
        {"SignaturNameSecond_EDT", u"  نام صاحب امضا دوم :"_qs},
        {"SignaturFamilySecond_EDT", u"  نام خانوادگی صاحب امضا دوم :"_qs},
        {"SignaturIdNationalSecond_EDT", u"  شماره ملی صاحب امضا دوم :"_qs},
        {"SignaturPositionSecond_EDT", u"  سمت صاحب امضا دوم :"_qs},
    };
    const QStringList employerTitles{u"حقیقی"_qs, u"حقوقی"_qs};
    const QStringList legalTitles{u"وزارت خانه"_qs,
                                  u"موسسه دولتی"_qs,
                                  u"شرکت دولتی"_qs,
                                  u"سایر دستگاههای دولتی"_qs,
                                  u"نهادهای عمومی غیر دولتی"_qs,
                                  u"بخش خصوصی"_qs,
                                  u"سایر پرداخت کنندگان حقوق"_qs};
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_EQ(screen.windowTitle(), u" اطلاعات پایه "_qs);
        for (const auto &[name, caption] : captions) {
            auto *label = Keys::find<QLabel>(&screen, QString::fromLatin1(name) + "_Caption");
            EXPECT_EQ(label->text(), caption) << name;
            EXPECT_EQ(label->buddy(), Keys::child(&screen, name)) << name;
        }
        const auto items = [](const TSmartComboBox_ZLM *list) {
            QStringList texts;
            for (int i = 0; i < list->count(); ++i)
                texts << list->itemText(i);
            return texts;
        };
        EXPECT_EQ(items(screen.EmployeeTitle_CMB), employerTitles);
        EXPECT_EQ(items(screen.LegalTitle_CMB), legalTitles);
        EXPECT_EQ(screen.CaseNo_EDT->MaxLength(), 20);
        EXPECT_EQ(screen.FactoryAdrr_EDT->MaxLength(), 200);
        for (const TSmartEdit_ZLM *input :
             {screen.EmployerName_EDT, screen.FactoryName_EDT, screen.BranchName_EDT, screen.PayerName_EDT,
              screen.PayerFamily_EDT, screen.SignaturNameFirst_EDT, screen.SignaturNameSecond_EDT})
            EXPECT_EQ(input->MaxLength(), 50) << input->objectName().toStdString();
        for (const TSmartEdit_ZLM *input : {screen.LeisureIns_EDT, screen.StageCode_EDT}) {
            EXPECT_EQ(input->kind(), TSmartEdit_ZLM::Number);
            EXPECT_EQ(input->MaxLength(), 15);
        }
        EXPECT_EQ(Keys::find<QLabel>(&screen, "LeisureIns_EDT_Suffix")->text(), "%");
        EXPECT_EQ(screen.Payroll_PC->tabText(0), u"اطلاعات شرکت"_qs);
        EXPECT_EQ(screen.Payroll_PC->tabText(1), u"اطلاعات تکمیلی دارایی"_qs);
        QStringList groups;
        for (const char *name : {"General_GB", "Bank_GB", "Payer_GB", "Signatur_GB"})
            groups << Keys::find<QGroupBox>(&screen, name)->title();
        EXPECT_EQ(groups, (QStringList{u"عمومی"_qs, u" دیسکت بانک "_qs, u"  اطلاعات پرداخت کننده حقوق  "_qs,
                                       u" اطلاعات حساب امضا "_qs}));
    });
}

namespace {

/// Whether the input that a message stands at was on the screen when it was told.
class Witness : public TMessageService {
public:
    explicit Witness(ScriptedMessages &messages) : m_messages(messages) { SetMessageService(this); }
    ~Witness() override { SetMessageService(&m_messages); }
    TAnswer show(const TMessage &message) override
    {
        atShownInput = message.control && message.control->isVisible();
        return m_messages.show(message);
    }
    bool atShownInput = false;

private:
    ScriptedMessages &m_messages;
};

} // namespace

TEST_F(PayrollInfoEditor, AWrongNationalNumberIsToldWhenItsPageIsShown)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.NationalNo_EDT->SetText("1111111111");
        screen.Payroll_PC->setCurrentIndex(1);
        screen.PayerName_EDT->setFocus();
        Witness witness(messages);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.last().number, 10310);
        EXPECT_TRUE(witness.atShownInput);
        EXPECT_EQ(screen.Payroll_PC->currentIndex(), 0);
        EXPECT_TRUE(screen.NationalNo_EDT->hasFocus());
        screen.NationalNo_EDT->Clear(); // an empty one is valid
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
}

TEST_F(PayrollInfoEditor, BlanksAreNoName)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.PayerName_EDT->SetText("   ");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MsgRequiredField(نام پرداخت کننده)"_qs});
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollInfoEditor, WithoutTheRightTheSecondPageIsNeitherOpenedNorAskedFor)
{
    UserInfo.IsAdmin = false;
    db.run("insert into UserAccount(Code,Name,FullName,PasswordHash,IsAdmin,IsActive,FailedCount) "
           "values(1,'clerk','clerk','',0,1,0)");
    db.run("insert into UserRight(UserCode,SoftwarePart,Permission) values(1,801,6)");
    show([&](TPayrollInfoGet_FRM &screen) {
        Keys::press(&screen, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(screen.Payroll_PC->currentIndex(), 0);
        messages.take();
        fillAll(screen);
        screen.PayerName_EDT->Clear();
        screen.SignaturNameFirst_EDT->Clear();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MSGCompeletedSuccessfully(ذخيره سازي )")});
    });
}

TEST_F(PayrollInfoEditor, WithoutTheRightToOpenTheScreenIsNotShown)
{
    UserInfo.IsAdmin = false;
    TPayrollInfoGet_FRM screen(cspPayrollInfo, 0, fmEdit, false);
    EXPECT_TRUE(screen.NotShowable);
}

TEST_F(PayrollInfoEditor, BranchNumberOneIsTheHeadOfficeWithABlankAtEachEnd)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        screen.BranchNo_EDT->setFocus();
        Keys::retype(screen.BranchNo_EDT, "1");
        EXPECT_FALSE(screen.BranchName_EDT->isReadOnly()) << "the rule waits until the input is left";
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_EQ(screen.BranchName_EDT->GetText(), u(" دفتر مرکزي "));
        EXPECT_TRUE(screen.BranchName_EDT->isReadOnly());
        screen.BranchNo_EDT->setFocus();
        Keys::retype(screen.BranchNo_EDT, "12");
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_FALSE(screen.BranchName_EDT->isReadOnly());
        EXPECT_EQ(screen.BranchName_EDT->GetText(), u(" دفتر مرکزي ")) << "the name stays";
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollInfoEditor, SavingByKeyFromTheBranchNumberAppliesItsRule)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.BranchNo_EDT->setFocus();
        Keys::retype(screen.BranchNo_EDT, "1");
        Keys::press(&screen, Qt::Key_F3);
    });
    EXPECT_EQ(stored(20), u(" دفتر مرکزي "));
}

TEST_F(PayrollInfoEditor, TheLegalTitleIsShownForALegalEntityOnly)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_FALSE(screen.LegalTitle_CMB->isVisible());
        screen.EmployeeTitle_CMB->setFocus();
        Keys::press(&screen, Qt::Key_Down);
        Keys::press(&screen, Qt::Key_Down);
        EXPECT_EQ(screen.EmployeeTitle_CMB->currentIndex(), 1);
        EXPECT_TRUE(screen.LegalTitle_CMB->isVisible());
        Keys::press(&screen, Qt::Key_Up);
        EXPECT_FALSE(screen.LegalTitle_CMB->isVisible());
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollInfoEditor, Typing150PercentLeaves15)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        screen.LeisureIns_EDT->setFocus();
        Keys::retype(screen.LeisureIns_EDT, "150");
        EXPECT_EQ(screen.LeisureIns_EDT->GetText(), "15");
        EXPECT_EQ(screen.LeisureIns_EDT->cursorPosition(), 2) << "the old length minus 1";
        Keys::retype(screen.LeisureIns_EDT, "100");
        EXPECT_EQ(screen.LeisureIns_EDT->GetText(), "100");
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollInfoEditor, AFailedSaveTellsSoAndKeepsEverythingTyped)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.FactoryName_EDT->setFocus();
        Keys::retype(screen.FactoryName_EDT, "new");
        db.failStatement(1, TFault::ConnectionLost);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MSGFinishedNotSuccessfully(ذخيره سازي)")});
        EXPECT_TRUE(messages.last().text.contains(TDatabaseError(TFault::ConnectionLost, {}).userText()));
        EXPECT_EQ(screen.FactoryName_EDT->GetText(), "new");
        EXPECT_FALSE(screen.IsSaved());
        db.failStatement(0);
        Keys::press(&screen, Qt::Key_F3);
    });
    EXPECT_EQ(stored(7), "new");
}

TEST_F(PayrollInfoEditor, AnyChangeMarksTheScreenUnsaved)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_TRUE(screen.IsSaved());
        screen.PayerFamily_EDT->setFocus();
        Keys::type(screen.PayerFamily_EDT, "x");
        EXPECT_FALSE(screen.IsSaved());
        messages.answer({TAnswer::No});
    });
    EXPECT_EQ(messages.unansweredQuestions(), 0);
}

namespace {

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

} // namespace

TEST_F(PayrollItem, AnItemIsLinkedByTypingTheCode)
{
    const int result = show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        EXPECT_EQ(screen.Title1_LBL->text(),
                  db.text(QString("select Title from PayrollInfoDetail where ID=%1").arg(earning)));
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_EQ(screen.Code_LBL->text(), "earning");
        Keys::picture(&screen, "payrollinfo-item");
        Keys::press(&screen, Qt::Key_F3);
    });
    EXPECT_EQ(result, int(QDialog::Accepted));
    EXPECT_EQ(linkOf(earning), "901");
}

TEST_F(PayrollItem, AnEarningsCodeIsNoDeductionsCode)
{
    show(deduction, 1, [&](TPayrollInfoDetail_FRM &screen) {
        const QString before = linkOf(deduction);
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MsgCodeNotAvailable(کسورات)")});
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->IsEmpty());
        EXPECT_TRUE(screen.Code_LBL->text().isEmpty());
        EXPECT_EQ(linkOf(deduction), before) << "an input that was cleared stops the save";
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MsgRequiredField(کد)")});
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->hasFocus());
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollItem, AnUnknownEarningIsNamedSo)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "777");
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_EQ(messages.take(), QStringList{u("MsgCodeNotAvailable(مزايا)")});
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollItem, TheSelectionButtonPutsTheChosenCodeIn)
{
    RegisterEntityPicker(cspDeduction, [](const QString &) { return 902; });
    show(deduction, 1, [&](TPayrollInfoDetail_FRM &screen) {
        screen.FiscalDeducationCode_EDT->setFocus();
        Keys::press(&screen, Qt::Key_F2);
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "902");
        EXPECT_EQ(screen.Code_LBL->text(), "deduction");
        EXPECT_FALSE(screen.IsSaved());
        Keys::press(&screen, Qt::Key_F3);
    });
    RegisterEntityPicker(cspDeduction, nullptr);
    EXPECT_EQ(linkOf(deduction), "902");
}

TEST_F(PayrollItem, NothingChosenLeavesTheCodeAsTyped)
{
    RegisterEntityPicker(cspFiscal, [](const QString &) { return 0; });
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_F2);
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "901");
        messages.answer({TAnswer::No});
    });
    RegisterEntityPicker(cspFiscal, nullptr);
}

TEST_F(PayrollItem, ARefusedLinkTellsSoAndStaysOpen)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_Return);
        db.failStatement(1, TFault::Locked);
        Keys::press(&screen, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList{u("MSGFinishedNotSuccessfully(ذخيره سازي)")});
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "901");
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollItem, TheEditorsGridShowsTheLinksAndOpensThemByEnter)
{
    PayrollInfoEditor::show([&](TPayrollInfoGet_FRM &screen) {
        screen.Payroll_PC->setCurrentIndex(1);
        auto *grid = Keys::find<TSmartGrid_ZLM>(&screen, "PAyrollInfDB_List_TableView");
        ASSERT_NE(grid, nullptr);
        EXPECT_EQ(grid->model()->rowCount(), db.text("select count(*) from PayrollInfoDetail").toInt());
        data.PayrollDetailList_QUR->moveTo(data.PayrollDetailList_QUR->rowOfKey(earning));
        grid->setFocus();
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_Return);
                return 0;
            },
            [&](QWidget *item) {
                Keys::retype(Keys::child(item, "FiscalDeducationCode_EDT"), "901");
                Keys::press(item, Qt::Key_F3);
            });
        EXPECT_EQ(data.PayrollDetailList_QUR->asString("UserTitle"), "earning");
        EXPECT_EQ(data.PayrollDetailList_QUR->asInteger("ID"), earning) << "the row stays current";
        Keys::picture(&screen, "payrollinfo-items");
    });
}

TEST_F(PayrollItem, TheEditButtonAndADoubleClickOpenTheCurrentItem)
{
    PayrollInfoEditor::show([&](TPayrollInfoGet_FRM &screen) {
        screen.Payroll_PC->setCurrentIndex(1);
        auto *grid = Keys::find<TSmartGrid_ZLM>(&screen, "PAyrollInfDB_List_TableView");
        const auto opens = [&](const std::function<void()> &action) {
            QString title;
            Keys::runModal(
                [&] {
                    action();
                    return 0;
                },
                [&](QWidget *item) {
                    title = Keys::find<QLabel>(item, "Title1_LBL")->text();
                    Keys::press(item, Qt::Key_Escape);
                });
            return title;
        };
        const auto current = [&] { return data.PayrollDetailList_QUR->asString("Title"); };
        data.PayrollDetailList_QUR->moveTo(2);
        QString opened = opens([&] { Keys::find<QAbstractButton>(&screen, "EditRow_BTN")->click(); });
        EXPECT_EQ(opened, current());
        const QPoint at = grid->visualRect(grid->model()->index(1, 1)).center();
        opened = opens([&] {
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
        });
        EXPECT_EQ(opened, current());
        EXPECT_EQ(data.PayrollDetailList_QUR->position(), 1);
    });
}

TEST_F(PayrollItem, AnItemLinkedToSomethingThatIsGoneSaysSoOnOpening)
{
    db.run(QString("update PayrollInfoDetail set UserCode=777 where ID=%1").arg(deduction));
    show(deduction, 1, [&](TPayrollInfoDetail_FRM &screen) {
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->IsEmpty());
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->MaxLength(), 6);
        EXPECT_TRUE(screen.IsSaved());
    });
    EXPECT_EQ(linkOf(deduction), "777");
}
