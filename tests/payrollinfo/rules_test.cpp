#include "payrollinfo/Screens.h"

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(PayrollInfoEditor, TheRatesStartAsZero)
{
    const TPayrollInfoGet_FRM screen(cspPayrollInfo, 0, fmEdit, false);
    EXPECT_EQ(screen.LeisureIns_EDT->GetText(), "0");
    EXPECT_EQ(screen.StageCode_EDT->GetText(), "0");
}

TEST_F(PayrollInfoEditor, EveryChangeMarksTheScreenUnsaved)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_TRUE(screen.IsSaved());
        int inputs = 0;
        for (int page = 0; page < 2; ++page) {
            screen.Payroll_PC->setCurrentIndex(page);
            for (auto *input : screen.Payroll_PC->widget(page)->findChildren<TSmartEdit_ZLM *>()) {
                screen.SetIsSaved(true);
                Keys::type(input, "7");
                EXPECT_FALSE(screen.IsSaved()) << input->objectName().toStdString();
                ++inputs;
            }
        }
        screen.Payroll_PC->setCurrentIndex(0);
        screen.EmployeeTitle_CMB->setCurrentIndex(1); // the other list is hidden without it
        for (auto *list : {screen.EmployeeTitle_CMB, screen.LegalTitle_CMB}) {
            screen.SetIsSaved(true);
            list->setFocus();
            Keys::press(list, list->currentIndex() > 0 ? Qt::Key_Up : Qt::Key_Down);
            EXPECT_FALSE(screen.IsSaved()) << list->objectName().toStdString();
            screen.EmployeeTitle_CMB->setCurrentIndex(1);
            ++inputs;
        }
        EXPECT_EQ(inputs, 25);
        messages.answer({No});
    });
    EXPECT_EQ(messages.unansweredQuestions(), 0);
}

TEST_F(PayrollInfoEditor, ABlankIsATextWhereOneIsAskedFor)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.BranchCode_EDT->SetText(" ");
        screen.PayerName_EDT->SetText(" ");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(saved));
    });
    EXPECT_EQ(stored(12), " ");
    EXPECT_EQ(stored(21), " ");
}

TEST_F(PayrollInfoEditor, TypedBlanksAreNoTextAndTypedCodesAreStoredInLatinDigits)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        Keys::retype(screen.OrganCode_EDT, "  ");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(کد سازمان)"_s));
        Keys::retype(screen.OrganCode_EDT, u" ۷۷ "_s);
        screen.Payroll_PC->setCurrentIndex(1);
        Keys::retype(screen.PayerName_EDT, "  ");
        screen.SignaturPositionFirst_EDT->Clear();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(سمت صاحب امضا اول)"_s))
            << "the others first";
        screen.SignaturPositionFirst_EDT->SetText("p");
        screen.Payroll_PC->setCurrentIndex(0);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(نام پرداخت کننده)"_s));
        EXPECT_TRUE(screen.PayerName_EDT->hasFocus());
        Keys::retype(screen.PayerName_EDT, u"مریم"_s);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(saved));
    });
    EXPECT_EQ(stored(14), "77");
}

TEST_F(PayrollInfoEditor, ACaseNumberThatIsTooShortIsToldInGreyWhenItsPageIsShown)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.CaseNo_EDT->SetText("12345678901");
        screen.Payroll_PC->setCurrentIndex(1);
        screen.PayerName_EDT->setFocus();
        messages.take();
        Witness witness(messages);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(),
                  QStringList(u"ShowTooltipMessage(شماره پرونده نمي تواند کوچکتر از 12 رقم باشد)"_s));
        EXPECT_TRUE(witness.atShownInput);
        const TMessage balloon = messages.last();
        EXPECT_EQ(balloon.shape, TMessageShape::Balloon);
        EXPECT_EQ(balloon.control, screen.CaseNo_EDT);
        EXPECT_EQ(balloon.displayTime, 3000);
        EXPECT_EQ(balloon.width, 250);
        EXPECT_EQ(balloon.color, QColor(192, 192, 192));
        EXPECT_EQ(screen.Payroll_PC->currentIndex(), 0);
        EXPECT_TRUE(screen.CaseNo_EDT->hasFocus());
        messages.answer({No});
    });
}

TEST_F(PayrollInfoEditor, TheHeadOfficeIsNamedOnOpeningAndTheScreenIsStillSaved)
{
    db.run("update PayrollInfo set Value='1' where Code=19");
    db.run("update PayrollInfo set Value='other' where Code=20");
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_EQ(screen.BranchName_EDT->GetText(), u" دفتر مرکزي "_s);
        EXPECT_TRUE(screen.BranchName_EDT->isReadOnly());
        EXPECT_TRUE(screen.IsSaved());
    });
    EXPECT_EQ(stored(20), "other") << "only saving stores the name";
}

TEST_F(PayrollInfoEditor, ABranchNumberThatOnlyLooksLikeOneIsNotTheHeadOffice)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        screen.BranchName_EDT->SetText("mine");
        for (const char *number : {"01", " 1", "1 ", "11"}) {
            Keys::retype(screen.BranchNo_EDT, number);
            Keys::press(&screen, Qt::Key_Return);
            EXPECT_FALSE(screen.BranchNo_EDT->hasFocus());
            EXPECT_EQ(screen.BranchName_EDT->GetText(), "mine") << number;
            EXPECT_FALSE(screen.BranchName_EDT->isReadOnly()) << number;
        }
        messages.answer({No});
    });
}

TEST_F(PayrollInfoEditor, TheHeadOfficeIsNamedToo_WhenTheQuestionOfClosingIsAnsweredWithYes)
{
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.BranchName_EDT->SetText("mine");
        Keys::retype(screen.BranchNo_EDT, "1");
        messages.whenShown(&Keys::leaveAll);
        messages.answer({Yes});
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_EQ(messages.take(), (QStringList{"MsgNotSaved()", saved}));
    });
    EXPECT_EQ(stored(19), "1");
    EXPECT_EQ(stored(20), u" دفتر مرکزي "_s);
}

TEST_F(PayrollInfoEditor, TheHiddenLegalTitleIsStoredAsItStands)
{
    db.run("update PayrollInfo set Value='0' where Code=16");
    db.run("update PayrollInfo set Value='5' where Code=17");
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_FALSE(screen.LegalTitle_CMB->isVisible());
        fillAll(screen);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(saved));
    });
    EXPECT_EQ(stored(16), "0");
    EXPECT_EQ(stored(17), "5");
}

TEST_F(PayrollInfoEditor, SaveAndNewSavesAndClosesSinceThereIsOneRecordOnly)
{
    const int result = show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        Keys::press(&screen, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList(saved));
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, int(QDialog::Accepted));
    EXPECT_EQ(stored(15), "123456789012");
}

TEST_F(PayrollInfoEditor, WithTheRightTheSecondPageOpensAndIsAskedFor)
{
    holdOnly({6, 8011});
    show([&](TPayrollInfoGet_FRM &screen) {
        Keys::press(&screen, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(screen.Payroll_PC->currentIndex(), 1);
        EXPECT_EQ(messages.take(), QStringList());
        Keys::press(&screen, Qt::Key_1, Qt::ControlModifier);
        fillAll(screen);
        screen.PayerName_EDT->Clear();
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(نام پرداخت کننده)"_s));
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.Payroll_PC->currentIndex(), 1);
        EXPECT_TRUE(screen.PayerName_EDT->hasFocus());
        messages.answer({No});
    });
}

TEST_F(PayrollInfoEditor, ARightThatCannotBeReadStopsTheSave)
{
    holdOnly({6, 8011});
    show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        screen.PayerName_EDT->Clear();
        messages.take();
        db.failStatement(1, TFault::Locked);
        Keys::press(&screen, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_TRUE(screen.isVisible());
        EXPECT_FALSE(screen.IsSaved());
        EXPECT_EQ(screen.CaseNo_EDT->GetText(), "123456789012");
        EXPECT_NE(stored(15), "123456789012");
        messages.answer({No});
    });
}

TEST_F(PayrollInfoEditor, WhatIsChangedAfterASaveIsSavedByTheNextOne)
{
    const int result = show([&](TPayrollInfoGet_FRM &screen) {
        fillAll(screen);
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_TRUE(screen.IsSaved());
        EXPECT_EQ(stored(15), "123456789012");
        Keys::retype(screen.CaseNo_EDT, QString(25, '7'));
        EXPECT_FALSE(screen.IsSaved());
        Keys::press(&screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList({saved, saved}));
        Keys::retype(screen.CaseNo_EDT, "dropped");
        messages.answer({TAnswer::Cancel, TAnswer::No});
        Keys::press(&screen, Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.CaseNo_EDT->GetText(), "dropped");
        Keys::press(&screen, Qt::Key_Escape);
    });
    EXPECT_EQ(result, 1) << "something was saved";
    EXPECT_EQ(stored(15), QString(20, '7'));
    EXPECT_EQ(db.text("select count(*) from PayrollInfo"), "25");
}

TEST_F(PayrollInfoEditor, TheHeadOfficesNameStaysWhenTheBranchNumberChangesAndComesBackWithIt)
{
    const QString head = u" دفتر مرکزي "_s;
    show([&](TPayrollInfoGet_FRM &screen) {
        const auto leave = [&](const QString &number) {
            Keys::retype(screen.BranchNo_EDT, number);
            Keys::press(&screen, Qt::Key_Tab);
        };
        leave("1");
        Keys::type(screen.BranchName_EDT, "x");
        EXPECT_EQ(screen.BranchName_EDT->GetText(), head);
        for (const char *other : {"11", "", "10"}) {
            leave(other);
            EXPECT_EQ(screen.BranchName_EDT->GetText(), head) << other;
            EXPECT_FALSE(screen.BranchName_EDT->isReadOnly()) << other;
        }
        Keys::retype(screen.BranchName_EDT, "own name");
        leave("1");
        EXPECT_TRUE(screen.BranchName_EDT->isReadOnly());
        fillAll(screen);
        screen.BranchNo_EDT->SetText("1");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{saved});
    });
    EXPECT_EQ(stored(19), "1");
    EXPECT_EQ(stored(20), head);
}

TEST_F(PayrollInfoEditor, ValuesThatAreNullOpenAsEmptyOnes)
{
    db.run("update PayrollInfo set Value=null");
    show([&](TPayrollInfoGet_FRM &screen) {
        EXPECT_TRUE(screen.IsSaved());
        EXPECT_TRUE(screen.LeisureIns_EDT->IsEmpty());
        EXPECT_FALSE(screen.LegalTitle_CMB->isVisible());
        fillAll(screen);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{saved});
    });
    EXPECT_EQ(stored(15), "123456789012");
}
