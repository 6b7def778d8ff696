#include "payrollinfo/Screens.h"
#include "support/TestUser.h"

using namespace Qt::Literals::StringLiterals;

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
        {"FactoryID_EDT", u"  شما&ره کارگاه :"_s},
        {"FactoryName_EDT", u"  نام &کارگاه :"_s},
        {"EmployerName_EDT", u"  ن&ام کارفرما :"_s},
        {"FactoryAdrr_EDT", u"  نشانی کار&گاه :"_s},
        {"Ejtemae_EDT", u"  نام شعبه &تامین اجتماعی :"_s},
        {"LeisureIns_EDT", u"  &حق بیمه بیکاری :"_s},
        {"BranchCode_EDT", u"  کد شع&به :"_s},
        {"StageCode_EDT", u"  کد مر&حله جاری :"_s},
        {"OrganCode_EDT", u"  کد &سازمان :"_s},
        {"CaseNo_EDT", u"  &شماره پرونده :"_s},
        {"EmployeeTitle_CMB", u"  &عنوان کارفرما :"_s},
        {"LegalTitle_CMB", u"  عن&وان شخص حقوقی :"_s},
        {"NationalNo_EDT", u"  ش&ماره ملی کارفرما :"_s},
        {"BranchNo_EDT", u"  شماره شعب&ه :"_s},
        {"BranchName_EDT", u"  نام شعبه :"_s},
        {"PayerName_EDT", u"  &نام پرداخت کننده :"_s},
        {"PayerFamily_EDT", u"  نام &خانوادگی پرداخت کننده :"_s},
        {"SignaturNameFirst_EDT", u"  نام صاحب امضا اول :"_s},
        {"SignaturFamilyFirst_EDT", u"  نام خانوادگی صاحب امضا اول :"_s},
        {"SignaturIdNationalFirst_EDT", u"  شماره ملی صاحب امضا اول :"_s},
        {"SignaturPositionFirst_EDT", u"  سمت صاحب امضا اول :"_s},
        {"SignaturNameSecond_EDT", u"  نام صاحب امضا دوم :"_s},
        {"SignaturFamilySecond_EDT", u"  نام خانوادگی صاحب امضا دوم :"_s},
        {"SignaturIdNationalSecond_EDT", u"  شماره ملی صاحب امضا دوم :"_s},
        {"SignaturPositionSecond_EDT", u"  سمت صاحب امضا دوم :"_s},
    };
    const QStringList employerTitles{u"حقیقی"_s, u"حقوقی"_s};
    const QStringList legalTitles{u"وزارت خانه"_s,
                                  u"موسسه دولتی"_s,
                                  u"شرکت دولتی"_s,
                                  u"سایر دستگاههای دولتی"_s,
                                  u"نهادهای عمومی غیر دولتی"_s,
                                  u"بخش خصوصی"_s,
                                  u"سایر پرداخت کنندگان حقوق"_s};
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_EQ(screen.windowTitle(), u" اطلاعات پایه "_s);
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
              screen.PayerFamily_EDT, screen.SignaturNameFirst_EDT, screen.SignaturFamilyFirst_EDT,
              screen.SignaturNameSecond_EDT, screen.SignaturFamilySecond_EDT})
            EXPECT_EQ(input->MaxLength(), 50) << input->objectName().toStdString();
        for (const TSmartMaskEdit_ZLM *input :
             {screen.NationalNo_EDT, screen.SignaturIdNationalFirst_EDT, screen.SignaturIdNationalSecond_EDT})
            EXPECT_EQ(input->MaxLength(), 10) << input->objectName().toStdString();
        for (const TSmartEdit_ZLM *input : {screen.LeisureIns_EDT, screen.StageCode_EDT}) {
            EXPECT_EQ(input->kind(), TSmartEdit_ZLM::Number);
            EXPECT_EQ(input->MaxLength(), 15);
        }
        EXPECT_EQ(Keys::find<QLabel>(&screen, "LeisureIns_EDT_Suffix")->text(), "%");
        EXPECT_EQ(screen.Payroll_PC->tabText(0), u"اطلاعات شرکت"_s);
        EXPECT_EQ(screen.Payroll_PC->tabText(1), u"اطلاعات تکمیلی دارایی"_s);
        QStringList groups;
        for (const char *name : {"General_GB", "Bank_GB", "Payer_GB", "Signatur_GB"})
            groups << Keys::find<QGroupBox>(&screen, name)->title();
        EXPECT_EQ(groups, (QStringList{u"عمومی"_s, u" دیسکت بانک "_s, u"  اطلاعات پرداخت کننده حقوق  "_s,
                                       u" اطلاعات حساب امضا "_s}));
    });
}

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

TEST_F(PayrollInfoEditor, WithoutTheRightTheSecondPageIsNeitherOpenedNorAskedFor)
{
    holdOnly({6});
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
    SeatUser(UserInfo);
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
        db.failStatement(3, TFault::ConnectionLost); // behind the rights to the second page and to save
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
