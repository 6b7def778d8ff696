#include "entity/EntityScreens.h"
#include "support/LostAnswer.h"

#include <QLabel>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(ItemEditor, TheAllGroupsRowCannotBeSavedInto)
{
    editNew(cspFiscal, "0", [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.Group_CMB->currentText(), u"کليه گروه ها"_s);
        fill(editor, "e");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"NotSaveable(کليه گروه ها|رکوردي)"_s});
        EXPECT_TRUE(editor.Group_CMB->hasFocus());
        Keys::press(&editor, Qt::Key_Down);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(db.text("select GrpCode from Fiscal where Code=10"), "1");
}

TEST_F(ItemEditor, ValidationsRunInTheirOrder)
{
    editNew(cspFiscal, "0", [&](TFiscalDeducation_Get_FRM &editor) {
        const auto refused = [&](const QString &message, QWidget *focus) {
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList{message});
            EXPECT_TRUE(editor.isVisible());
            EXPECT_TRUE(!focus || focus->hasFocus()) << message.toStdString();
        };
        editor.Code_EDT->Clear();
        refused(u"MsgRequiredField(کد)"_s, nullptr);
        editor.Code_EDT->SetText("6"); // a deduction's
        refused(u"MsgRepeatedField(کد|)"_s, nullptr);
        EXPECT_EQ(editor.Code_EDT->GetText(), "10");
        refused(u"NotSaveable(کليه گروه ها|رکوردي)"_s, editor.Group_CMB);
        editor.Group_CMB->SetCode(1);
        refused(u"MsgRequiredField(عنوان)"_s, editor.Title_EDT);
        Keys::type(editor.Title_EDT, u"پاداش"_s);
        refused(u"MsgRepeatedField(عنوان|مزايا)"_s, editor.Title_EDT);
        Keys::retype(editor.Title_EDT, u"تازه"_s);
        TSelect_AccountCode *account = editor.TSelect_AccountCode1;
        refused(u"MsgRequiredField(حساب کارمند را به طور کامل)"_s, account->TotalCode_EDT);
        Keys::type(account->TotalCode_EDT, "61");
        refused(u"MsgRequiredField(حساب کارمند را به طور کامل)"_s, account->TotalCode_EDT);
        Keys::type(account->AssistantCode_EDT, "1");
        refused(u"MsgRequiredField(حساب کارمند را به طور کامل)"_s, account->TotalCode_EDT);
        Keys::type(account->DetailCode_EDT, "2");
        refused(u"MsgRequiredField(مبلغ)"_s, editor.Cost_EDT);
        Keys::type(editor.Cost_EDT, "0");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(earning(10), u"1|2|تازه|61|1|2|0|0|0|"_s);
}

TEST_F(ItemEditor, AnAmountThatIsEmptyWhileTheBasisIsPercentIsAskedForAsTheRate)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "e");
        chooseBasis(editor, u"درصد"_s);
        editor.Cost_EDT->Clear(); // nobody can: it is hidden
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.last().control, editor.Cost_EDT);
        EXPECT_EQ(messages.take(), QStringList{u"MsgRequiredField(نرخ)"_s});
        EXPECT_TRUE(editor.isVisible());
        chooseBasis(editor, u"مبلغ"_s);
        Keys::type(editor.Cost_EDT, "12");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(db.text("select Cost from Fiscal where Code=10"), "12");
}

TEST_F(ItemEditor, ARepeatedTitleOfADeductionIsToldWithTheWordOfTheEarnings)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, u"مساعده"_s);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MsgRepeatedField(عنوان|مزايا)"_s});
        leave(editor);
    });
}

TEST_F(ItemEditor, ATitleIsRepeatedHoweverItIsWrittenAndTheItemIsNamed)
{
    db.run(u"update Fiscal set Title=N' كار عيدي' where Code=4"_s);
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, u"کار عیدی"_s);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MsgRepeatedField(عنوان|مزايا)"_s});
        EXPECT_TRUE(messages.last().text.endsWith(u"كار عيدي (کد 4)"_s))
            << messages.last().text.toStdString();
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        Keys::retype(editor.Title_EDT, "   ");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MsgRequiredField(عنوان)"_s});
        leave(editor);
    });
    edit(cspFiscal, 4, [&](TFiscalDeducation_Get_FRM &editor) { // its own title in another form is no other's
        messages.take();
        Keys::retype(editor.Title_EDT, u"کار عیدی"_s);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList());
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(db.text("select Title from Fiscal where Code=4"), u"کار عیدی"_s);
}

TEST_F(ItemEditor, TitlesAreUniqueWithinTheirKindOnly)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, u"پاداش"_s); // an earning's
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(db.text("select Title from Deduction where Code=10"), u"پاداش"_s);
    edit(cspFiscal, 4, [&](TFiscalDeducation_Get_FRM &editor) { // keeps its own title
        Keys::retype(editor.Cost_EDT, "77");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    edit(cspFiscal, 4, [&](TFiscalDeducation_Get_FRM &editor) {
        Keys::retype(editor.Title_EDT, u"مسکن"_s);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MsgRepeatedField(عنوان|مزايا)"_s});
        EXPECT_EQ(editor.Title_EDT->GetText(), u"مسکن"_s);
        leave(editor);
    });
    EXPECT_EQ(earning(4), u"2|0|پاداش|61|1|2|77|0|0|"_s);
}

TEST_F(ItemEditor, ACodeThatAnotherUserSavedMeanwhileIsToldAndStaysTheProposedOne)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "e");
        db.run("insert into Deduction(Code,GrpCode,CalcType,Title) values(10,5,0,'theirs')");
        for (int attempt = 0; attempt < 2; ++attempt) {
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList{u"MsgRepeatedField(کد|)"_s});
            EXPECT_EQ(editor.Code_EDT->GetText(), "10");
        }
        EXPECT_EQ(editor.Title_EDT->GetText(), "e");
        leave(editor);
    });
    EXPECT_EQ(earning(10), "");
    editNew(cspFiscal, "1",
            [&](TFiscalDeducation_Get_FRM &editor) { EXPECT_EQ(editor.Code_EDT->GetText(), "11"); });
}

TEST_F(ItemEditor, AnAccountThatTheChartDoesNotHaveCountsAsNone)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "e");
        Keys::retype(editor.TSelect_AccountCode1->AssistantCode_EDT, "99");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), (QStringList{u"MsgRequiredField(حساب کارمند را به طور کامل)"_s,
                                                u"ShowTooltipMessage(کد معین 99 ثبت نشده است)"_s}));
        EXPECT_EQ(editor.TSelect_AccountCode1->AssistantCode_EDT->GetText(), "99");
        EXPECT_TRUE(editor.TSelect_AccountCode1->Name_LBL->text().contains(u"کد معین 99 ثبت نشده است"_s));
        Keys::picture(&editor, "earning_unknown_account");
        leave(editor);
    });
}

TEST_F(ItemEditor, TheDetailAccountOfADeductionIsNarrower)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "d");
        Keys::retype(editor.TSelect_AccountCode1->DetailCode_EDT, "40000");
        EXPECT_EQ(editor.TSelect_AccountCode1->DetailCode_EDT->GetText(),
                  "4000");                                         // the last digit is not taken
        editor.TSelect_AccountCode1->SetCodes("61", "1", "40000"); // as a picker gives it
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take().last(), u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Title_EDT->GetText(), "d");
        leave(editor);
    });
    EXPECT_EQ(deduction(10), "");
}

TEST_F(ItemEditor, AGroupDeletedByAnotherWorkstationIsToldAndNothingIsLost)
{
    editNew(cspFiscal, "2", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "e");
        db.run("update Fiscal set GrpCode=1");
        db.run("delete from FiscalGrp where Code=2");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s});
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Title_EDT->GetText(), "e");
        editor.Group_CMB->SetCode(1);
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(db.text("select GrpCode from Fiscal where Code=10"), "1");
}

TEST_F(ItemEditor, AnItemDeletedWhileItsEditorIsOpenIsToldAndTheInputsStay)
{
    edit(cspFiscal, 4, [&](TFiscalDeducation_Get_FRM &editor) {
        Keys::retype(editor.Title_EDT, "kept");
        db.run("delete from Fiscal where Code=4");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_s});
        EXPECT_EQ(editor.Title_EDT->GetText(), "kept");
        leave(editor);
    });
    EXPECT_EQ(earning(4), "");
}

TEST_F(ItemEditor, AFaultAtAnyStatementOfASaveLosesNothing)
{
    for (const bool newItem : {true, false}) {
        for (int n = 1;; ++n) {
            bool saved = false;
            const auto save = [&](TFiscalDeducation_Get_FRM &editor) {
                fill(editor, QString("title %1 %2").arg(newItem).arg(n));
                editor.TSelect_AccountCode1->Refresh();
                messages.take();
                const QString before = db.rows("select * from Deduction order by Code");
                db.failStatement(n);
                Keys::press(&editor, Qt::Key_F3);
                saved = !editor.isVisible(); // what failed last is the line in the event log, after the save
                db.failStatement(0);
                if (saved)
                    return;
                const QStringList told = messages.take();
                EXPECT_EQ(told.size(), 1) << n;
                EXPECT_TRUE(editor.isVisible()) << n;
                EXPECT_EQ(db.rows("select * from Deduction order by Code"), before) << n;
                EXPECT_EQ(editor.Title_EDT->GetText(), QString("title %1 %2").arg(newItem).arg(n));
                Keys::press(&editor, Qt::Key_F3); // the fault is over
                EXPECT_FALSE(editor.isVisible()) << n;
            };
            const int result = newItem ? editNew(cspDeduction, "5", save) : edit(cspDeduction, 9, save);
            EXPECT_EQ(result, QDialog::Accepted) << n;
            messages.take();
            if (saved) {
                EXPECT_GE(n, 4);
                break;
            }
            ASSERT_LT(n, 50);
        }
    }
}

TEST_F(ItemEditor, ASaveWhoseAnswerWasLostIsGoneOnWith)
{
    const int result = editNew(cspFiscal, "2", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, u"  کلی'ي  "_s);
        chooseBasis(editor, u"درصد"_s);
        Keys::retype(editor.CostPercent_EDT, "9.50");
        editor.Tax_CHK->setChecked(true);
        Keys::retype(editor.Comment_EDT, "c");
        {
            const LostAnswer lost(db, "insert into [Fiscal]");
            Keys::press(&editor, Qt::Key_F3);
        }
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_TRUE(editor.isVisible());
        Keys::retype(editor.Title_EDT, "since");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList());
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earning(10), "2|1|since|61|2|1|9.5|0|1|c");
    EXPECT_EQ(db.text("select count(*) from Fiscal"), "6");
}

TEST_F(ItemEditor, AnItemThatAnotherUserStoredWhileTheLineWasLostIsNotWrittenOver)
{
    // By its title, and by its amount alone.
    for (const char *theirs : {"6,0,'theirs',7,61,2,1", "5,0,'mine',1600,61,2,1"}) {
        editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
            fill(editor, "mine");
            breakBefore(db, "insert into [Deduction]", [&] { Keys::press(&editor, Qt::Key_F3); });
            messages.take();
            db.run(u"insert into Deduction(Code,GrpCode,CalcType,Title,Cost,Kol,Moin,Tafzili) values(10,%1)"_s
                       .arg(theirs));
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList{u"MsgRepeatedField(کد|)"_s});
            EXPECT_TRUE(editor.isVisible());
            EXPECT_EQ(editor.Title_EDT->GetText(), "mine");
            leave(editor);
        });
        EXPECT_EQ(db.rows("select GrpCode,CalcType,Title,Cost,Kol,Moin,Tafzili from Deduction where Code=10"),
                  QString(theirs).remove(u'\'').replace(u',', u'|'));
        db.run("delete from Deduction where Code=10");
    }
}

TEST_F(ItemEditor, SaveAndNewBeginsTheNextItemInTheSameGroup)
{
    editNew(cspFiscal, "2", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "first");
        chooseBasis(editor, u"درصد"_s);
        Keys::retype(editor.CostPercent_EDT, "9");
        editor.Tax_CHK->setChecked(true);
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Code_EDT->GetText(), "11");
        EXPECT_EQ(editor.Group_CMB->Code(), 2);
        EXPECT_EQ(editor.CalcType_CMB->currentText(), u"ماهيانه"_s);
        EXPECT_TRUE(editor.Title_EDT->IsEmpty());
        EXPECT_TRUE(editor.Cost_EDT->IsEmpty());
        EXPECT_EQ(editor.CostPercent_EDT->text(), "0");
        EXPECT_FALSE(editor.Tax_CHK->isChecked());
        EXPECT_TRUE(editor.TSelect_AccountCode1->TotalCode_EDT->IsEmpty());
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        fill(editor, "second");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(earning(10), "2|1|first|61|2|1|9|0|1|");
    EXPECT_EQ(earning(11), "2|2|second|61|2|1|1500|0|0|");
    edit(cspDeduction, 8, [&](TFiscalDeducation_Get_FRM &editor) { // group 6, kind 1: the kind is no group
        Keys::press(&editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(editor.Group_CMB->Code(), 6);
        EXPECT_EQ(editor.CalcType_CMB->count(), 3);
    });
}

TEST_F(ItemEditor, SaveAndStayEditsTheSavedItemOn)
{
    const int result = editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "first");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(editor.Mode(), fmEdit);
        EXPECT_EQ(editor.Cost_EDT->text(), "1,500");
        Keys::retype(editor.Title_EDT, "second");
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earning(10), "1|2|second|61|2|1|1500|0|0|");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemEditor, SaveAndStaySavesAgainAndAgainUnderTheSameTitle)
{
    const auto twice = [&](TFiscalDeducation_Get_FRM &editor) {
        for (const char *cost : {"21", "22"}) {
            Keys::retype(editor.Cost_EDT, cost);
            Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
            EXPECT_EQ(messages.take(), QStringList());
            EXPECT_TRUE(editor.IsSaved());
            EXPECT_EQ(db.text("select count(*) from Deduction where Cost=" + QString(cost)), "1");
        }
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_FALSE(editor.isVisible());
    };
    EXPECT_EQ(editNew(cspDeduction, "5",
                      [&](TFiscalDeducation_Get_FRM &editor) {
                          fill(editor, "kept");
                          twice(editor);
                      }),
              QDialog::Accepted);
    EXPECT_EQ(deduction(10), "5|0|kept|61|2|1|22|");
    db.run("update Deduction set Cost=1 where Code=10");
    EXPECT_EQ(edit(cspDeduction, 8, twice), QDialog::Accepted);
    EXPECT_EQ(db.text("select Cost from Deduction where Code=8"), "22");
}

TEST_F(ItemEditor, ATypedChangeIsAskedAboutBeforeItIsLost)
{
    edit(cspFiscal, 1, [&](TFiscalDeducation_Get_FRM &editor) {
        Keys::type(editor.Title_EDT, "x");
        EXPECT_FALSE(editor.IsSaved());
        messages.answer({Cancel, No});
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_TRUE(editor.isVisible());
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(messages.take(), (QStringList{"MsgNotSaved()", "MsgNotSaved()"}));
}
