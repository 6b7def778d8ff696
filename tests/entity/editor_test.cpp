#include "entity/EntityScreens.h"

#include <QCoreApplication>
#include <QLabel>

using namespace Qt::Literals::StringLiterals;

TEST_F(ItemEditor, ANewEarningOpensOnMonthlyWithTheNextCodeOfBothKinds)
{
    editNew(cspFiscal, "2", [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.objectName(), "TFiscalDeducation_Get_FRM");
        EXPECT_EQ(editor.Code_EDT->GetText(), "10");
        EXPECT_FALSE(editor.Code_EDT->isEnabled());
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        EXPECT_EQ(editor.Group_CMB->Code(), 2);
        EXPECT_EQ(editor.CalcType_CMB->currentText(), u"ماهيانه"_s);
        EXPECT_EQ(editor.CalcType_CMB->currentIndex(), 2);
        EXPECT_EQ(editor.CalcType_CMB->count(), 4);
        EXPECT_EQ(editor.CalcType_CMB->toolTip(),
                  u"با توجه به تعداد روزهاي کارکرد کارمند در ماه محاسبه ميشود"_s);
        EXPECT_TRUE(editor.Insurance_CHK->isVisible());
        EXPECT_TRUE(editor.Insurance_LBL->isVisible());
        EXPECT_TRUE(editor.Tax_CHK->isVisible());
        EXPECT_TRUE(editor.Tax_LBL->isVisible());
        EXPECT_FALSE(editor.InstallmentWarning_LBL->isVisible());
        EXPECT_TRUE(editor.Cost_EDT->isVisible());
        EXPECT_TRUE(editor.Cost_EDT->IsEmpty());
        EXPECT_FALSE(editor.CostPercent_EDT->isVisible());
        EXPECT_FALSE(editor.Percent_LBL->isVisible());
        EXPECT_EQ(editor.Cost_LBL->text(), u" مب&لغ :"_s);
        EXPECT_TRUE(editor.IsSaved());
        Keys::picture(&editor, "earning_new");
        Keys::press(&editor, Qt::Key_Escape);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemEditor, BeforeItOpensItsAmountHasACaptionOfItsOwn)
{
    Entity_DM = new TEntity_DM(nullptr);
    for (const TSoftwarePart part : {cspFiscal, cspDeduction})
        EXPECT_EQ(TFiscalDeducation_Get_FRM(part, false, "1").Cost_LBL->text(), u"  مبل&غ :"_s);
}

TEST_F(ItemEditor, ANewDeductionOffersAmountPercentAndFixed)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.Code_EDT->GetText(), "10");
        QStringList offered;
        for (int i = 0; i < editor.CalcType_CMB->count(); ++i)
            offered << editor.CalcType_CMB->itemText(i);
        EXPECT_EQ(offered, (QStringList{u"مبلغ"_s, u"درصد"_s, u"ثابت"_s}));
        EXPECT_EQ(editor.CalcType_CMB->currentIndex(), 0);
        EXPECT_EQ(editor.CalcType_CMB->toolTip(), u"با توجه به مقدار کارکرد کارمند محاسبه ميشود"_s);
        EXPECT_FALSE(editor.Insurance_CHK->isVisible());
        EXPECT_FALSE(editor.Insurance_LBL->isVisible());
        EXPECT_FALSE(editor.Tax_CHK->isVisible());
        EXPECT_FALSE(editor.Tax_LBL->isVisible());
        EXPECT_TRUE(editor.InstallmentWarning_LBL->isVisible());
        EXPECT_EQ(editor.InstallmentWarning_LBL->text(),
                  u"در صورتی که کسورات مورد نظر اقساط باشد ، حساب قسط در حکم کارگزینی ملاک خواهد بود"_s);
        EXPECT_EQ(editor.InstallmentWarning_LBL->palette().color(QPalette::WindowText), QColor(0x80, 0, 0));
        Keys::picture(&editor, "deduction_new");
    });
}

TEST_F(ItemEditor, EachInputHasItsCaptionAndItsLimits)
{
    const std::pair<const char *, QString> captions[] = {
        {"Code_EDT", u"  کد :"_s},
        {"Group_CMB", u"  کد &گروه :"_s},
        {"Title_EDT", u"  &عنوان :"_s},
        {"TSelect_AccountCode1", u"  &حساب :"_s},
        {"CalcType_CMB", u"  &مبنای محاسباتی :"_s},
        {"Comment_EDT", u"  &شرح :"_s},
        {"Insurance_CHK", u"بیم&ه"_s},
        {"Tax_CHK", u"مالیا&ت"_s},
    };
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        for (const auto &[name, caption] : captions) {
            QWidget *input = Keys::child(&editor, name);
            const auto labels = editor.findChildren<QLabel *>();
            const auto label = std::find_if(labels.begin(), labels.end(),
                                            [input](const QLabel *each) { return each->buddy() == input; });
            ASSERT_TRUE(label != labels.end()) << name;
            EXPECT_EQ((*label)->text(), caption) << name;
        }
        EXPECT_EQ(editor.Save_BTN->text(), u"ذخيره F3"_s);
        EXPECT_EQ(editor.Save_BTN->SaveMode(), svSaveClose);
        EXPECT_EQ(editor.EXit_BTN->text(), u"خروج Esc"_s);
        EXPECT_EQ(editor.Code_EDT->MaxLength(), 15);
        EXPECT_EQ(editor.Title_EDT->MaxLength(), 50);
        EXPECT_EQ(editor.Cost_EDT->MaxLength(), 15);
        EXPECT_EQ(editor.CostPercent_EDT->MaxLength(), 15);
        EXPECT_EQ(editor.Comment_EDT->MaxLength(), 50);
        EXPECT_EQ(editor.Cost_EDT->kind(), TSmartEdit_ZLM::Money);
        EXPECT_EQ(editor.CostPercent_EDT->kind(), TSmartEdit_ZLM::Number);
    });
}

TEST_F(ItemEditor, EnterGoesThroughTheInputsInTheirOrder)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        TSelect_AccountCode *account = editor.TSelect_AccountCode1;
        const QList<QWidget *> order = {editor.Insurance_CHK,    editor.Tax_CHK,
                                        editor.Group_CMB,        editor.Title_EDT,
                                        account->TotalCode_EDT,  account->AssistantCode_EDT,
                                        account->DetailCode_EDT, editor.CalcType_CMB,
                                        editor.Cost_EDT,         editor.Comment_EDT};
        editor.Insurance_CHK->setFocus();
        for (QWidget *input : order) {
            EXPECT_TRUE(input->hasFocus()) << input->objectName().toStdString();
            Keys::press(&editor, Qt::Key_Return);
        }
    });
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        chooseBasis(editor, u"درصد"_s);
        for (QWidget *input :
             {static_cast<QWidget *>(editor.CalcType_CMB), static_cast<QWidget *>(editor.CostPercent_EDT),
              static_cast<QWidget *>(editor.Comment_EDT)}) {
            EXPECT_TRUE(input->hasFocus()) << input->objectName().toStdString();
            Keys::press(&editor, Qt::Key_Return);
        }
        leave(editor);
    });
}

TEST_F(ItemEditor, TheHintOfTheBasisTellsWhatItMeansForTheKind)
{
    const QString amount = u"با توجه به مقدار کارکرد کارمند محاسبه ميشود"_s;
    const QString percent = u"با توجه به درصدي از دستمزد کارمند محاسبه ميشود"_s;
    const QString byDays = u"با توجه به تعداد روزهاي کارکرد کارمند در ماه محاسبه ميشود"_s;
    const QString fixed = u"به صورت ثابت در هر فيش حقوقي اضافه ميشود"_s;
    const auto hints = [&](TSoftwarePart part) {
        QStringList shown;
        editNew(part, "-1", [&](TFiscalDeducation_Get_FRM &editor) {
            for (int i = 0; i < editor.CalcType_CMB->count(); ++i) {
                editor.CalcType_CMB->setCurrentIndex(i);
                shown << editor.CalcType_CMB->toolTip();
            }
            leave(editor);
        });
        return shown;
    };
    EXPECT_EQ(hints(cspFiscal), (QStringList{amount, percent, byDays, fixed}));
    EXPECT_EQ(hints(cspDeduction), (QStringList{amount, percent, fixed}));
}

TEST_F(ItemEditor, ThePercentSignStandsBehindItsNumber)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        chooseBasis(editor, u"درصد"_s);
        QCoreApplication::processEvents();
        const QRect number = editor.CostPercent_EDT->geometry();
        EXPECT_LT(editor.Percent_LBL->geometry().right(), number.left());
        EXPECT_LT(number.right(), editor.Cost_LBL->geometry().left());
        leave(editor);
    });
}

TEST_F(ItemEditor, FixedIsStoredAsTwoForADeductionAndAsThreeForAnEarning)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "d");
        chooseBasis(editor, u"ثابت"_s);
        EXPECT_EQ(editor.CalcType_CMB->toolTip(), u"به صورت ثابت در هر فيش حقوقي اضافه ميشود"_s);
        Keys::press(&editor, Qt::Key_F3);
    });
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "e");
        chooseBasis(editor, u"ثابت"_s);
        EXPECT_EQ(editor.CalcType_CMB->toolTip(), u"به صورت ثابت در هر فيش حقوقي اضافه ميشود"_s);
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.text("select CalcType from Deduction where Code=10"), "2");
    EXPECT_EQ(db.text("select CalcType from Fiscal where Code=11"), "3");
    EXPECT_EQ(db.text("select CalcTitle from Deduction_vw where Code=10"), u"ثابت"_s);
    EXPECT_EQ(db.text("select CalcTitle from Fiscal_vw where Code=1"), u"ماهيانه"_s);
}

TEST_F(ItemEditor, AnEarningIsTypedAndSavedWithTheKeyboardAlone)
{
    const int result = editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        // From the title, Enter goes through the three levels of the account to basis, amount and description.
        Keys::type(editor.focusWidget(), u"حق «مسکن» 'o'"_s);
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.TSelect_AccountCode1->TotalCode_EDT->hasFocus());
        Keys::type(editor.focusWidget(), u"۶۱"_s);
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.TSelect_AccountCode1->AssistantCode_EDT->hasFocus());
        Keys::type(editor.focusWidget(), "2");
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.TSelect_AccountCode1->DetailCode_EDT->hasFocus());
        Keys::type(editor.focusWidget(), "40000");
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.CalcType_CMB->hasFocus());
        EXPECT_EQ(editor.TSelect_AccountCode1->Name_LBL->text(), u"پرسنلی / مزایا / اداری"_s);
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.Cost_EDT->hasFocus());
        Keys::type(editor.focusWidget(), u"1,234,567,890.5"_s);
        EXPECT_EQ(editor.Cost_EDT->text(), "1,234,567,890.5");
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.Comment_EDT->hasFocus());
        Keys::type(editor.focusWidget(), u"شرح"_s);
        editor.Insurance_CHK->setFocus();
        Keys::press(&editor, Qt::Key_Space);
        Keys::picture(&editor, "earning_filled");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_FALSE(editor.isVisible());
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(earning(10), u"1|2|حق «مسکن» 'o'|61|2|40000|1234567890.5|1|0|شرح"_s);
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemEditor, PercentTakesThePlaceOfTheAmountAndIsNeverEmpty)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "e");
        chooseBasis(editor, u"درصد"_s);
        EXPECT_EQ(editor.Cost_LBL->text(), u"&نرخ :"_s);
        EXPECT_FALSE(editor.Cost_EDT->isVisible());
        EXPECT_EQ(editor.Cost_EDT->GetText(), "0");
        EXPECT_TRUE(editor.CostPercent_EDT->isVisible());
        EXPECT_TRUE(editor.Percent_LBL->isVisible());
        EXPECT_EQ(editor.Percent_LBL->text(), "%");
        EXPECT_EQ(editor.CostPercent_EDT->text(), "0");
        EXPECT_EQ(editor.Cost_LBL->buddy(), editor.CostPercent_EDT);
        Keys::press(&editor, Qt::Key_Return);
        EXPECT_TRUE(editor.CostPercent_EDT->hasFocus());
        Keys::type(editor.CostPercent_EDT, "12");
        Keys::retype(editor.CostPercent_EDT, {});
        EXPECT_EQ(editor.CostPercent_EDT->text(), "0");
        Keys::type(editor.CostPercent_EDT, "7.5");
        EXPECT_EQ(editor.CostPercent_EDT->text(), "7.5");
        Keys::picture(&editor, "earning_percent");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.text("select Cost from Fiscal where Code=10"), "7.5");
    EXPECT_EQ(db.text("select CalcType from Fiscal where Code=10"), "1");
}

TEST_F(ItemEditor, GoingBackFromPercentOffersTheAmountZero)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "d");
        chooseBasis(editor, u"درصد"_s);
        chooseBasis(editor, u"مبلغ"_s);
        EXPECT_TRUE(editor.Cost_EDT->isVisible());
        EXPECT_FALSE(editor.CostPercent_EDT->isVisible());
        EXPECT_EQ(editor.Cost_EDT->text(), "0");
        EXPECT_EQ(editor.Cost_LBL->text(), u" مب&لغ :"_s);
        EXPECT_EQ(editor.Cost_LBL->buddy(), editor.Cost_EDT);
        leave(editor);
    });
}

TEST_F(ItemEditor, AllSeparatorsOfAnAmountAreLeftOutOfTheStore)
{
    editNew(cspDeduction, "5", [&](TFiscalDeducation_Get_FRM &editor) {
        fill(editor, "d");
        Keys::retype(editor.Cost_EDT, "123456789012345");
        EXPECT_EQ(editor.Cost_EDT->text(), "123,456,789,012,345");
        Keys::type(editor.Cost_EDT, "6"); // the sixteenth digit is not taken
        EXPECT_EQ(editor.Cost_EDT->text(), "123,456,789,012,345");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(db.text("select Cost from Deduction where Code=10"), "123456789012345");
    edit(cspDeduction, 10, [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.Cost_EDT->text(), "123,456,789,012,345");
    });
}

TEST_F(ItemEditor, AnEarningIsShownAsItIsStored)
{
    db.run(QString::fromUtf8("update Fiscal set Insurance=1,Comment=N'توضیح' where Code=3"));
    edit(cspFiscal, 3, [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.Code_EDT->GetText(), "3");
        EXPECT_EQ(editor.Group_CMB->Code(), 2);
        EXPECT_EQ(editor.Title_EDT->GetText(), u"اضافه کاری"_s);
        EXPECT_EQ(editor.CalcType_CMB->currentText(), u"مبلغ"_s);
        EXPECT_EQ(editor.Cost_EDT->text(), "500.25");
        EXPECT_TRUE(editor.Insurance_CHK->isChecked());
        EXPECT_FALSE(editor.Tax_CHK->isChecked());
        EXPECT_EQ(editor.Comment_EDT->GetText(), u"توضیح"_s);
        EXPECT_EQ(editor.TSelect_AccountCode1->TotalCode_EDT->GetText(), "61");
        EXPECT_EQ(editor.TSelect_AccountCode1->AssistantCode_EDT->GetText(), "1");
        EXPECT_EQ(editor.TSelect_AccountCode1->DetailCode_EDT->GetText(), "2");
        EXPECT_EQ(editor.TSelect_AccountCode1->Name_LBL->text(), u"پرسنلی / حقوق / فروش"_s);
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        EXPECT_TRUE(editor.IsSaved());
        Keys::picture(&editor, "earning_edit");
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(ItemEditor, ARateIsShownInThePercentBox)
{
    edit(cspFiscal, 5, [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.CostPercent_EDT->text(), "35");
        EXPECT_TRUE(editor.CostPercent_EDT->isVisible());
        EXPECT_EQ(editor.Cost_EDT->GetText(), "0");
    });
}

TEST_F(ItemEditor, AFixedDeductionIsShownAsFixed)
{
    edit(cspDeduction, 9, [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.CalcType_CMB->count(), 3);
        EXPECT_EQ(editor.CalcType_CMB->currentText(), u"ثابت"_s);
        EXPECT_FALSE(editor.Insurance_CHK->isVisible());
        EXPECT_TRUE(editor.InstallmentWarning_LBL->isVisible());
    });
}

TEST_F(ItemEditor, ABasisThatTheListDoesNotOfferStaysAsItIs)
{
    db.run("update Deduction set CalcType=3 where Code=9");
    edit(cspDeduction, 9, [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_TRUE(editor.CalcType_CMB->IsEmpty());
        EXPECT_EQ(editor.CalcType_CMB->toolTip(), QString());
        Keys::retype(editor.Title_EDT, "x");
        Keys::press(&editor, Qt::Key_F3);
    });
    EXPECT_EQ(deduction(9), "6|3|x|61|1|2|25|");
}

TEST_F(ItemEditor, MinusOneChoosesTheFirstGroupAndAGroupThatIsGoneNone)
{
    editNew(cspDeduction, "-1",
            [&](TFiscalDeducation_Get_FRM &editor) { EXPECT_EQ(editor.Group_CMB->currentIndex(), 0); });
    editNew(cspDeduction, "77", [&](TFiscalDeducation_Get_FRM &editor) {
        EXPECT_EQ(editor.Group_CMB->currentIndex(), -1);
        fill(editor, "d");
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u"NotSaveable(کليه گروه ها|رکوردي)"_s});
        leave(editor);
    });
}

TEST_F(ItemEditor, TakesNoLockOnItsCode)
{
    editNew(cspFiscal, "1", [&](TFiscalDeducation_Get_FRM &) {
        EXPECT_EQ(db.text("select count(*) from CodeLock_TBL"), "0");
    });
}

TEST_F(ItemEditor, AnItemDeletedByAnotherWorkstationIsNotOpened)
{
    Entity_DM = new TEntity_DM(nullptr);
    TFiscalDeducation_Get_FRM editor(cspFiscal, 77, fmEdit, 0, false, true);
    EXPECT_EQ(editor.exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take(), QStringList{"MsgRecordGone()"});
}

TEST_F(ItemEditor, AFaultWhileOpeningIsToldAndNothingOpens)
{
    Entity_DM = new TEntity_DM(nullptr);
    for (const bool newItem : {true, false}) {
        TFiscalDeducation_Get_FRM *editor =
            newItem ? new TFiscalDeducation_Get_FRM(cspFiscal, false, "1")
                    : new TFiscalDeducation_Get_FRM(cspFiscal, 1, fmEdit, 0, false, true);
        db.failStatement(1);
        EXPECT_EQ(editor->exec(), QDialog::Rejected);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList{"MsgDatabaseError()"});
        delete editor;
    }
}

TEST_F(ItemEditor, NeedsTheRightOfItsPart)
{
    Entity_DM = new TEntity_DM(nullptr);
    Clerk clerk(db);
    clerk.grant(804, 1);
    clerk.grant(805, 2);
    EXPECT_FALSE(TFiscalDeducation_Get_FRM(cspFiscal, false, "1").NotShowable);
    EXPECT_TRUE(TFiscalDeducation_Get_FRM(cspDeduction, false, "5").NotShowable);
    EXPECT_TRUE(TFiscalDeducation_Get_FRM(cspFiscal, 1, fmEdit, 0, false, true).NotShowable);
    EXPECT_FALSE(TFiscalDeducation_Get_FRM(cspDeduction, 6, fmEdit, 1, false, true).NotShowable);
}
