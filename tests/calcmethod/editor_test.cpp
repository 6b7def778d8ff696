#include "calcmethod/Screens.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"

#include <QClipboard>
#include <QGroupBox>

#include <cmath>

using enum TAnswer;

namespace {

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
    const QString saved = u"MSGCompeletedSuccessfully(ذخيره سازي )"_qs;
    const QString notSaved = u"MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"_qs;
};

TEST_F(CalcMethodEditor, ANewMethodHasItsDefaults)
{
    add(6, "six");
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->objectName(), "TCalcMethodGet_FRM");
        EXPECT_EQ(editor->windowTitle(), u"روش محاسباتي"_qs);
        EXPECT_EQ(editor->Code_EDT->GetText(), "7");
        EXPECT_TRUE(editor->Title_EDT->IsEmpty());
        EXPECT_FALSE(editor->Tax_CHK->isChecked());
        EXPECT_FALSE(editor->CalcMethodCode_EDT->isEnabled());
        EXPECT_TRUE(editor->CalcMethodCode_EDT->IsEmpty());
        EXPECT_EQ(editor->Maskok_SPNEDT->value(), 0);
        EXPECT_EQ(editor->MandeMaskok_LBL->text(), "0");
        EXPECT_TRUE(editor->Comment_EDT->IsEmpty());
        EXPECT_TRUE(editor->DecTax_CHK->isChecked());
        EXPECT_EQ(editor->StaffIns_EDT->GetText(), "7");
        EXPECT_EQ(editor->EmployerIns_EDT->GetText(), "20");
        EXPECT_TRUE(editor->DailyIns_EDT->IsEmpty());
        EXPECT_FALSE(editor->Insurance_CHK->isChecked());
        for (auto *input : {editor->StaffIns_EDT, editor->EmployerIns_EDT, editor->DailyIns_EDT})
            EXPECT_FALSE(input->isEnabled());
        EXPECT_EQ(editor->Entrance_EDT->GetText(), "08:00");
        EXPECT_EQ(editor->Exit_EDT->GetText(), "16:00");
        EXPECT_EQ(editor->OverDis_CMB->currentText(), u"روزانه"_qs);
        EXPECT_EQ(editor->LeaveCeil_EDT->text(), "2");
        EXPECT_EQ(editor->OutPut_EDT->text(), "7.33");
        EXPECT_TRUE(editor->OverTime_EDT->IsEmpty());
        EXPECT_TRUE(editor->IsSaved());
        EXPECT_EQ(locks(), "7|813|1");
        Keys::picture(editor.get(), "calcmethod_new_general");
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::picture(editor.get(), "calcmethod_new_attendance");
        Keys::press(editor.get(), Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_EQ(locks(), "");
    EXPECT_EQ(titles(), "6|six");
}

TEST_F(CalcMethodEditor, EveryInputHasItsCaption)
{
    const auto editor = newEditor();
    const std::pair<const char *, QString> captions[] = {
        {"Code_EDT", u"  &کد :"_qs},
        {"Title_EDT", u"  &عنوان :"_qs},
        {"CalcMethodCode_EDT", u"  کد جدول مالیاتی :"_qs},
        {"Maskok_SPNEDT", u"  &مانده مسکوک :"_qs},
        {"Comment_EDT", u"  ش&رح :"_qs},
        {"StaffIns_EDT", u"  حق بیمه کارم&ند :"_qs},
        {"EmployerIns_EDT", u"  حق بیمه کار&فرما :"_qs},
        {"DailyIns_EDT", u"  سقف بیمه روزانه& :"_qs},
        {"Entrance_EDT", u"  ساعت ورود :"_qs},
        {"Exit_EDT", u"  ساعت خروج :"_qs},
        {"OverDis_CMB", u"  مبنای اضافه کار / کسر کار :"_qs},
        {"OutPut_EDT", u"  حداقل کارکرد روزانه :"_qs},
        {"LeaveCeil_EDT", u"  سقف مرخصی :"_qs},
        {"OverTime_EDT", u"  سقف اضافه کاری :"_qs},
    };
    for (const auto &[name, caption] : captions) {
        auto *label = Keys::find<QLabel>(editor.get(), QString::fromLatin1(name) + "_Caption");
        ASSERT_TRUE(label) << name;
        EXPECT_EQ(label->text(), caption) << name;
        EXPECT_EQ(label->buddy(), Keys::child(editor.get(), name)) << name;
    }
    const std::pair<const char *, QString> boxes[] = {
        {"Tax_CHK", u"م&شمول  مالیات"_qs},         {"BedBes_CHK", u"محاسبه بدهکاري / &بستانکاري"_qs},
        {"Loan_CHK", u"محاسبه ا&قساط"_qs},         {"DecTax_CHK", u"کسر 2.7 مالي&ات"_qs},
        {"Insurance_CHK", u"   مشمو&ل بیمه  "_qs},
    };
    for (const auto &[name, caption] : boxes)
        EXPECT_EQ(Keys::find<QAbstractButton>(editor.get(), name)->text(), caption) << name;
    const std::pair<const char *, QString> suffixes[] = {
        {"StaffIns_EDT", "%"},         {"EmployerIns_EDT", "%"},
        {"OutPut_EDT", u"ساعت"_qs},    {"LeaveCeil_EDT", u"روز در ماه"_qs},
        {"OverTime_EDT", u"ساعت "_qs},
    };
    for (const auto &[name, suffix] : suffixes)
        EXPECT_EQ(Keys::find<QLabel>(editor.get(), QString::fromLatin1(name) + "_Suffix")->text(), suffix)
            << name;
    EXPECT_EQ(editor->windowTitle(), u"روش محاسباتی"_qs);
    EXPECT_EQ(editor->CalcMethod_PC->tabText(0), u"عمومی"_qs);
    EXPECT_EQ(editor->CalcMethod_PC->tabText(1), u"حضور و غیاب"_qs);
    EXPECT_TRUE(Keys::find<QGroupBox>(editor.get(), "Ins_GRP")->isAncestorOf(editor->Insurance_CHK));
    EXPECT_EQ(editor->OverDis_CMB->itemText(0), u"روزانه"_qs);
    EXPECT_EQ(editor->OverDis_CMB->itemText(1), u"ماهانه"_qs);
    EXPECT_EQ(editor->Save_BTN->text(), u"ذخيره F3"_qs);
    EXPECT_EQ(editor->EXit_BTN->text(), u"خروج Esc"_qs);
}

TEST_F(CalcMethodEditor, EnterGoesThroughTheInputsInTheirOrder)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        check(editor->Insurance_CHK, true);
        editor->Code_EDT->setFocus();
        const QList<QWidget *> order = {
            editor->Code_EDT,      editor->Title_EDT,     editor->Tax_CHK,      nullptr,
            editor->Maskok_SPNEDT, editor->Comment_EDT,   editor->BedBes_CHK,   editor->Loan_CHK,
            editor->DecTax_CHK,    editor->Insurance_CHK, editor->StaffIns_EDT, editor->EmployerIns_EDT,
            editor->DailyIns_EDT};
        for (QWidget *input : order) {
            if (!input)
                input = editor->CalcMethodCode_EDT;
            EXPECT_TRUE(input->hasFocus()) << input->objectName().toStdString();
            Keys::press(editor.get(), Qt::Key_Return);
        }
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        for (QWidget *input :
             QList<QWidget *>{editor->Entrance_EDT, editor->Exit_EDT, editor->OverDis_CMB, editor->OutPut_EDT,
                              editor->LeaveCeil_EDT, editor->OverTime_EDT}) {
            EXPECT_TRUE(input->hasFocus()) << input->objectName().toStdString();
            Keys::press(editor.get(), Qt::Key_Return);
        }
        messages.answer({No});
        Keys::press(editor.get(), Qt::Key_Escape);
    });
}

TEST_F(CalcMethodEditor, ControlAndADigitTurnToThePages)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->CalcMethod_PC->currentIndex(), 0);
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(editor->CalcMethod_PC->currentIndex(), 1);
        EXPECT_TRUE(editor->Entrance_EDT->hasFocus());
        Keys::press(editor.get(), Qt::Key_1, Qt::ControlModifier);
        EXPECT_EQ(editor->CalcMethod_PC->currentIndex(), 0);
        EXPECT_TRUE(editor->IsSaved());
    });
}

TEST_F(CalcMethodEditor, TheAllottedCodeIsLockedUntilTheEditorCloses)
{
    const auto first = newEditor();
    open(*first, [&] {
        EXPECT_EQ(first->Code_EDT->GetText(), "1");
        EXPECT_EQ(locks(), "1|813|1");
        // Another workstation holds the code that comes next.
        db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('2',813,9)");
        db.run("insert into CalcMethod(Code,Title) values(1,'meanwhile')");
        const auto second = newEditor();
        open(*second, [&] {
            EXPECT_EQ(second->Code_EDT->GetText(), "3");
            EXPECT_EQ(locks(), "1|813|1\n2|813|9\n3|813|1");
        });
        EXPECT_EQ(locks(), "1|813|1\n2|813|9");
    });
    EXPECT_EQ(locks(), "2|813|9");
}

TEST_F(CalcMethodEditor, Typing150IntoAShareLeaves15)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Insurance_CHK, true);
        for (auto *share : {editor->StaffIns_EDT, editor->EmployerIns_EDT}) {
            const std::pair<QString, QString> typed[] = {
                {"150", "15"},     {"100", "100"}, {"101", "10"},        {"99.99", "99.99"},
                {"1000", "100"},   {"999", "99"},  {"7.5", "7.5"},       {"100.5", "10.5"},
                {u"۱۵۰"_qs, "15"}, {"15", "15"},   {"12.345", "12.345"},
            };
            for (const auto &[keys, left] : typed) {
                Keys::retype(share, keys);
                EXPECT_EQ(share->text(), left) << keys.toStdString();
                EXPECT_EQ(share->cursorPosition(), share->text().size());
            }
        }
    });
    EXPECT_EQ(messages.unansweredQuestions(), 0);
}

TEST_F(CalcMethodEditor, APastedShareNeverStaysAbove100)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Insurance_CHK, true);
        for (const QString pasted : {"150", "9999", "123456789", "100.0000001", "400000000000000"}) {
            editor->StaffIns_EDT->setFocus();
            editor->StaffIns_EDT->selectAll();
            QApplication::clipboard()->setText(pasted);
            Keys::press(editor.get(), Qt::Key_V, Qt::ControlModifier);
            EXPECT_LE(editor->StaffIns_EDT->asFloat(), 100) << pasted.toStdString();
        }
    });
}

TEST_F(CalcMethodEditor, InsuranceOpensItsThreeInputs)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        for (const bool on : {true, false, true}) {
            check(editor->Insurance_CHK, on);
            for (auto *input : {editor->StaffIns_EDT, editor->EmployerIns_EDT, editor->DailyIns_EDT})
                EXPECT_EQ(input->isEnabled(), on);
        }
        EXPECT_EQ(editor->StaffIns_EDT->GetText(), "7");
    });
}

TEST_F(CalcMethodEditor, UncheckingTaxEmptiesTheCodeAndItsTitle)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        check(editor->Tax_CHK, true);
        EXPECT_TRUE(editor->CalcMethodCode_EDT->isEnabled());
        Keys::retype(editor->CalcMethodCode_EDT, "3");
        Keys::press(editor.get(), Qt::Key_Tab);
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), u"جدول سوم"_qs);
        check(editor->Tax_CHK, false);
        EXPECT_FALSE(editor->CalcMethodCode_EDT->isEnabled());
        EXPECT_TRUE(editor->CalcMethodCode_EDT->IsEmpty());
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "");
        Keys::press(editor.get(), Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(saved));
    EXPECT_EQ(db.rows("select Tax, TaxMainCode from CalcMethod"), "0|0");
}

TEST_F(CalcMethodEditor, TheRoundingLabelShowsTheUnitOfTheDigits)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        editor->Maskok_SPNEDT->setFocus();
        QStringList units = {editor->MandeMaskok_LBL->text()};
        for (int i = 0; i < 8; ++i) {
            Keys::press(editor.get(), Qt::Key_Up);
            units << editor->MandeMaskok_LBL->text();
        }
        EXPECT_EQ(units, (QStringList{"0", "10", "100", "1000", "10000", "100000", "1000000", "1000000",
                                      "1000000"}));
        EXPECT_EQ(editor->Maskok_SPNEDT->value(), 6);
    });
}

TEST_F(CalcMethodEditor, EveryChangeMarksTheMethodAsChanged)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Insurance_CHK, true);
        check(editor->Tax_CHK, true);
        for (auto *input : editor->findChildren<TSmartEdit_ZLM *>()) {
            if (input->window() != editor.get())
                continue;
            editor->SetIsSaved(true);
            Keys::type(input, input == editor->CalcMethodCode_EDT ? "3" : "1");
            if (qobject_cast<TSmartTime_ZLM *>(input))
                Keys::retype(input, "0930");
            EXPECT_FALSE(editor->IsSaved()) << input->objectName().toStdString();
        }
        for (auto *box : editor->findChildren<TSmartCheckBox_ZLM *>()) {
            editor->SetIsSaved(true);
            box->setFocus();
            Keys::press(box, Qt::Key_Space);
            EXPECT_FALSE(editor->IsSaved()) << box->objectName().toStdString();
        }
        editor->SetIsSaved(true);
        Keys::press(editor->Maskok_SPNEDT, Qt::Key_Up);
        EXPECT_FALSE(editor->IsSaved());
        editor->SetIsSaved(true);
        Keys::press(editor->OverDis_CMB, Qt::Key_Down);
        EXPECT_FALSE(editor->IsSaved());
        messages.answer({Cancel, No});
        Keys::press(editor.get(), Qt::Key_Escape);
        EXPECT_TRUE(editor->isVisible());
        Keys::press(editor.get(), Qt::Key_Escape);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(titles(), "");
}

TEST_F(CalcMethodEditor, TheTitleOfATypedTaxTableIsShownWhenItsCodeIsLeft)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, u"۳"_qs);
        Keys::press(editor.get(), Qt::Key_Return);
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), u"جدول سوم"_qs);
        EXPECT_TRUE(editor->Maskok_SPNEDT->hasFocus());
        Keys::picture(editor.get(), "calcmethod_tax_code");
        Keys::retype(editor->CalcMethodCode_EDT, "");
        Keys::press(editor.get(), Qt::Key_Return);
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "");
        EXPECT_TRUE(editor->Maskok_SPNEDT->hasFocus());
        EXPECT_EQ(messages.take(), QStringList());
    });
}

TEST_F(CalcMethodEditor, AnUnknownTaxCodeIsClearedWithAHintAndKeepsTheFocus)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "3");
        Keys::press(editor.get(), Qt::Key_Tab);
        Keys::retype(editor->CalcMethodCode_EDT, "99");
        Keys::press(editor.get(), Qt::Key_Tab);
        EXPECT_TRUE(editor->CalcMethodCode_EDT->IsEmpty());
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "");
        EXPECT_TRUE(editor->CalcMethodCode_EDT->hasFocus());
        ASSERT_EQ(messages.all().size(), 1);
        EXPECT_EQ(messages.last().text, u"جدول مالیاتی با این کد ثبت نشده است"_qs);
        EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
        EXPECT_EQ(messages.last().control, editor->CalcMethodCode_EDT);
        Keys::press(editor.get(), Qt::Key_Tab);
        EXPECT_FALSE(editor->CalcMethodCode_EDT->hasFocus());
    });
    EXPECT_EQ(messages.all().size(), 2); // the hint, and the question about the changes
}

TEST_F(CalcMethodEditor, ATaxTableWithoutATitleIsNotAvailable)
{
    db.run("insert into TaxMain(Code) values(8)");
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "8");
        Keys::press(editor.get(), Qt::Key_Tab);
        EXPECT_EQ(messages.take(), QStringList(u"MsgCodeNotAvailable(جدول مالياتي)"_qs));
        EXPECT_EQ(editor->CalcMethodCode_EDT->GetText(), "8");
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "");
        EXPECT_TRUE(editor->CalcMethodCode_EDT->hasFocus());
        messages.answer({No});
        Keys::press(editor.get(), Qt::Key_Escape);
    });
}

TEST_F(CalcMethodEditor, ATaxCodeThatCannotBeLookedUpStaysAsTyped)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "3");
        db.failStatement(1, TFault::ConnectionLost);
        Keys::press(editor.get(), Qt::Key_Tab);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_EQ(editor->CalcMethodCode_EDT->GetText(), "3");
        EXPECT_TRUE(editor->isVisible());
    });
}

TEST_F(CalcMethodEditor, ThePickButtonTakesTheChosenTaxTable)
{
    int calls = 0;
    int chosen = 4;
    RegisterEntityPicker(cspTax, [&](const QString &text) {
        ++calls;
        EXPECT_EQ(text, "");
        return chosen;
    });
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        editor->CalcMethodCode_EDT->setFocus();
        Keys::press(editor.get(), Qt::Key_F2);
        EXPECT_EQ(editor->CalcMethodCode_EDT->GetText(), "4");
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "table four");
        chosen = 0;
        editor->CalcMethodCode_EDT->PickButton()->click();
        EXPECT_EQ(editor->CalcMethodCode_EDT->GetText(), "4");
        EXPECT_EQ(calls, 2);
    });
    RegisterEntityPicker(cspTax, {});
}

TEST_F(CalcMethodEditor, TheInputsAreCheckedInTheirOrder)
{
    add(9, "nine");
    const auto editor = newEditor();
    const auto refused = [&](const QString &message, QWidget *focus, int page) {
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(message));
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(editor->CalcMethod_PC->currentIndex(), page) << message.toStdString();
        EXPECT_TRUE(focus->hasFocus()) << focus->objectName().toStdString();
        EXPECT_EQ(titles(), "9|nine");
    };
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        check(editor->Insurance_CHK, true);
        Keys::retype(editor->StaffIns_EDT, "");
        Keys::retype(editor->EmployerIns_EDT, "");
        Keys::retype(editor->Code_EDT, "9");
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::retype(editor->LeaveCeil_EDT, "");
        Keys::retype(editor->OutPut_EDT, "");

        refused(u"MsgRepeatedField(کد)"_qs, editor->Code_EDT, 0);
        Keys::retype(editor->Code_EDT, "11");
        refused(u"MsgRequiredField(عنوان)"_qs, editor->Title_EDT, 0);
        Keys::retype(editor->Title_EDT, u"روش یازده"_qs);
        refused(u"MsgRequiredField(کد جدول مالياتي)"_qs, editor->CalcMethodCode_EDT, 0);
        Keys::retype(editor->CalcMethodCode_EDT, "4");
        refused(u"MsgRequiredField(حق بيمه کارمند)"_qs, editor->StaffIns_EDT, 0);
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "table four");
        Keys::retype(editor->StaffIns_EDT, "7");
        refused(u"MsgRequiredField(حق بيمه کارفرما)"_qs, editor->EmployerIns_EDT, 0);
        Keys::picture(editor.get(), "calcmethod_refused");
        Keys::retype(editor->EmployerIns_EDT, "23");
        refused(u"MsgRequiredField(سقف اضافه کاري)"_qs, editor->OverTime_EDT, 1);
        Keys::retype(editor->OverTime_EDT, "100");
        Keys::press(editor.get(), Qt::Key_1, Qt::ControlModifier);
        refused(u"MsgRequiredField(سقف مرخصي)"_qs, editor->LeaveCeil_EDT, 1);
        Keys::retype(editor->LeaveCeil_EDT, "2.5");
        refused(u"MsgRequiredField(حداقل کارکرد روزانه)"_qs, editor->OutPut_EDT, 1);
        Keys::retype(editor->OutPut_EDT, "7.5");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(editor->result(), QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList(saved));
    EXPECT_EQ(titles(), u"9|nine\n11|روش یازده"_qs);
}

TEST_F(CalcMethodEditor, ATaxCodeStillBeingTypedIsCheckedBySaving)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "99");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_TRUE(editor->isVisible());
        ASSERT_EQ(messages.all().size(), 1) << "the hint, and no further message";
        EXPECT_EQ(messages.last().text, u"جدول مالیاتی با این کد ثبت نشده است"_qs);
        EXPECT_TRUE(editor->CalcMethodCode_EDT->hasFocus());
        EXPECT_TRUE(editor->CalcMethodCode_EDT->IsEmpty());
        Keys::type(editor->CalcMethodCode_EDT, "3");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(db.rows("select Tax, TaxMainCode from CalcMethod"), "1|3");
}

TEST_F(CalcMethodEditor, EmptySharesAreAcceptedWithoutInsurance)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        check(editor->Insurance_CHK, true);
        Keys::retype(editor->StaffIns_EDT, "");
        Keys::retype(editor->EmployerIns_EDT, "");
        check(editor->Insurance_CHK, false);
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(db.rows("select Insurance, StaffIns, EmployerIns from CalcMethod"), "0|0|0");
}

TEST_F(CalcMethodEditor, ATimeThatDoesNotExistIsNotSaved)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::retype(editor->Exit_EDT, "2561");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_TRUE(editor->isVisible());
        EXPECT_TRUE(editor->Exit_EDT->hasFocus());
        EXPECT_EQ(messages.take().size(), 1);
        Keys::retype(editor->Exit_EDT, "1730");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(db.text("select [Exit] from CalcMethod"), "17:30");
}

TEST_F(CalcMethodEditor, EveryInputReachesItsColumnAndComesBack)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        Keys::retype(editor->Code_EDT, "42");
        Keys::retype(editor->Title_EDT, u"روش كارگاه"_qs);
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "3");
        editor->Maskok_SPNEDT->setFocus();
        Keys::press(editor.get(), Qt::Key_Up);
        Keys::press(editor.get(), Qt::Key_Up);
        Keys::retype(editor->Comment_EDT, u"شرح"_qs);
        check(editor->BedBes_CHK, true);
        check(editor->Loan_CHK, true);
        check(editor->DecTax_CHK, false);
        check(editor->Insurance_CHK, true);
        Keys::retype(editor->StaffIns_EDT, "7.5");
        Keys::retype(editor->EmployerIns_EDT, "22");
        Keys::retype(editor->DailyIns_EDT, "1234567");
        EXPECT_EQ(editor->DailyIns_EDT->text(), "1,234,567");
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::retype(editor->Entrance_EDT, "0730");
        Keys::retype(editor->Exit_EDT, "15:45");
        editor->OverDis_CMB->setFocus();
        Keys::press(editor.get(), Qt::Key_Down);
        Keys::retype(editor->OutPut_EDT, "8");
        Keys::retype(editor->LeaveCeil_EDT, "2.5");
        Keys::retype(editor->OverTime_EDT, "1000");
        Keys::press(editor.get(), Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(saved));
    const QString row = u"42|روش كارگاه|7.5|22|1000|3|1234567|0|2|2.5|8|شرح|1|1|1|1|1|07:30|15:45"_qs;
    const QString columns =
        "select Code,Title,StaffIns,EmployerIns,OverTime,TaxMainCode,DailyIns,DecTax,Maskok,"
        "LeaveCeil,OutPut,Comment,Insurance,Tax,BedBes,Loan,OverDis,Entrance,[Exit] "
        "from CalcMethod";
    EXPECT_EQ(db.rows(columns), row);

    const auto again = editorOf(42);
    open(*again, [&] {
        EXPECT_EQ(again->windowTitle(), u"روش محاسباتی"_qs);
        EXPECT_EQ(again->CalcMethodCode_LBL->text(), u"جدول سوم"_qs);
        EXPECT_EQ(again->MandeMaskok_LBL->text(), "100");
        EXPECT_EQ(again->DailyIns_EDT->text(), "1,234,567");
        EXPECT_EQ(again->OverDis_CMB->currentText(), u"ماهانه"_qs);
        EXPECT_TRUE(again->IsSaved());
        Keys::picture(again.get(), "calcmethod_edit_general");
        Keys::press(again.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::picture(again.get(), "calcmethod_edit_attendance");
        Keys::press(again.get(), Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(saved));
    EXPECT_EQ(db.rows(columns), row);
}

TEST_F(CalcMethodEditor, AmountsAreShownRoundedToTheHostsDecimalPlaces)
{
    add(1, "m", ",StaffIns,DailyIns,OutPut", ",7.123456789,1000.987654321,7.33");
    const auto editor = editorOf(1);
    open(*editor, [&] {
        const auto places = [](double number) {
            const double scale = std::pow(10, NumericPrecisionCount_ZLM());
            return std::round(number * scale) / scale;
        };
        EXPECT_DOUBLE_EQ(editor->StaffIns_EDT->asFloat(), places(7.123456789));
        EXPECT_DOUBLE_EQ(editor->DailyIns_EDT->asFloat(), places(1000.987654321));
        EXPECT_DOUBLE_EQ(editor->OutPut_EDT->asFloat(), places(7.33));
        EXPECT_EQ(editor->LeaveCeil_EDT->GetText(), "0");
    });
}

TEST_F(CalcMethodEditor, AMethodIsSavedUnderItsOwnCodeNotUnderThatOfAnother)
{
    add(1, "one", ",OverTime", ",5");
    add(2, "two", ",OverTime", ",5");
    const auto editor = editorOf(1);
    open(*editor, [&] {
        Keys::retype(editor->Title_EDT, "first");
        Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(), QStringList(saved));
        EXPECT_EQ(titles(), "1|first\n2|two");
        Keys::retype(editor->Code_EDT, "2");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد)"_qs));
        EXPECT_TRUE(editor->isVisible());
        Keys::retype(editor->Code_EDT, "3");
        Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(titles(), "2|two\n3|first");
        // The code that was saved is the method's own from now on.
        Keys::retype(editor->Title_EDT, "third");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(titles(), "2|two\n3|third");
}

TEST_F(CalcMethodEditor, AnEmptiedCodeIsTheAllottedOneAgain)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        Keys::retype(editor->Code_EDT, "");
        Keys::press(editor.get(), Qt::Key_F3);
    });
    EXPECT_EQ(titles(), "1|m");
}

TEST_F(CalcMethodEditor, CodesStayBetweenOneAndSixNines)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        Keys::retype(editor->Code_EDT, "999999");
        EXPECT_EQ(editor->Code_EDT->GetText(), "999999");
        Keys::type(editor->Code_EDT, "9");
        EXPECT_EQ(editor->Code_EDT->GetText(), "999999");
        Keys::retype(editor->Code_EDT, "0");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(titles(), "1|m");
}

TEST_F(CalcMethodEditor, HoursStayBetweenZeroAndAThousand)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        for (auto *hours : {editor->OutPut_EDT, editor->OverTime_EDT}) {
            Keys::retype(hours, "1000");
            EXPECT_EQ(hours->GetText(), "1000");
            Keys::retype(hours, "1001");
            EXPECT_EQ(hours->GetText(), "100");
            Keys::retype(hours, "-5");
            EXPECT_EQ(hours->GetText(), "5");
        }
    });
}

TEST_F(CalcMethodEditor, SaveAndNewStartsTheNextMethodAndThreeBoxesKeepTheirState)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor, "first");
        check(editor->Insurance_CHK, true);
        Keys::retype(editor->StaffIns_EDT, "9");
        check(editor->BedBes_CHK, true);
        check(editor->Loan_CHK, true);
        check(editor->DecTax_CHK, false);
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "3");
        editor->Maskok_SPNEDT->setFocus();
        Keys::press(editor.get(), Qt::Key_Up);
        Keys::press(editor.get(), Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList(saved));
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(editor->Mode(), fmNew);
        EXPECT_EQ(editor->Code_EDT->GetText(), "2");
        EXPECT_EQ(locks(), "2|813|1");
        EXPECT_TRUE(editor->Title_EDT->IsEmpty());
        EXPECT_TRUE(editor->Insurance_CHK->isChecked());
        EXPECT_TRUE(editor->BedBes_CHK->isChecked());
        EXPECT_TRUE(editor->Loan_CHK->isChecked());
        EXPECT_TRUE(editor->DecTax_CHK->isChecked());
        EXPECT_FALSE(editor->Tax_CHK->isChecked());
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "");
        EXPECT_EQ(editor->StaffIns_EDT->GetText(), "7");
        EXPECT_TRUE(editor->StaffIns_EDT->isEnabled());
        EXPECT_EQ(editor->Maskok_SPNEDT->value(), 0);
        EXPECT_EQ(editor->MandeMaskok_LBL->text(), "0");
        EXPECT_EQ(editor->windowTitle(), u"روش محاسباتي"_qs);
        Keys::retype(editor->Title_EDT, "second");
        Keys::press(editor.get(), Qt::Key_F3);
    });
    EXPECT_EQ(titles(), "1|first\n2|second");
}

TEST_F(CalcMethodEditor, AFaultAtAnyStatementOfASaveLeavesAllThatWasTyped)
{
    add(5, "five", ",OverTime,StaffIns", ",7,7");
    for (const bool newRecord : {true, false}) {
        const auto editor = newRecord ? newEditor() : editorOf(5);
        const QString before = titles();
        open(*editor, [&] {
            fill(*editor, "typed");
            int failed = 0;
            for (int statement = 1; editor->isVisible() && statement < 50; ++statement) {
                db.failStatement(statement, TFault::DiskFull);
                Keys::press(editor.get(), Qt::Key_F3);
                db.failStatement(0);
                if (!editor->isVisible())
                    break;
                ++failed;
                const QStringList told = messages.take();
                EXPECT_TRUE(told == QStringList(notSaved) || told == QStringList("MsgDatabaseError()"))
                    << statement << told.join(u',').toStdString();
                EXPECT_EQ(titles(), before) << statement;
                EXPECT_FALSE(editor->IsSaved());
                EXPECT_EQ(editor->Title_EDT->GetText(), "typed");
                EXPECT_EQ(editor->OverTime_EDT->GetText(), "120");
            }
            EXPECT_GE(failed, 3) << "the code check, the reading and the write";
        });
        EXPECT_EQ(editor->result(), QDialog::Accepted);
        messages.take();
        EXPECT_NE(titles(), before);
    }
}

TEST_F(CalcMethodEditor, ASaveThatTheDatabaseRefusesIsToldWithTheTwoWords)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor, "mine");
        db.run("insert into CalcMethod(Code,Title) values(1,'other')");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(notSaved));
        EXPECT_EQ(titles(), "1|other");
        EXPECT_EQ(editor->Title_EDT->GetText(), "mine");
        Keys::retype(editor->Code_EDT, "2");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(titles(), "1|other\n2|mine");
}

TEST_F(CalcMethodEditor, AMethodDeletedMeanwhileIsToldAndNothingTypedIsLost)
{
    add(5, "five", ",OverTime", ",7");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        Keys::retype(editor->Title_EDT, "typed");
        db.run("delete from CalcMethod");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(notSaved));
        EXPECT_EQ(editor->Title_EDT->GetText(), "typed");
        messages.answer({No});
        Keys::press(editor.get(), Qt::Key_Escape);
    });
    EXPECT_EQ(titles(), "");
    const auto gone = editorOf(5);
    EXPECT_EQ(gone->exec(), QDialog::Rejected);
    EXPECT_EQ(messages.take().last(), "MsgRecordGone()");
}

TEST_F(CalcMethodEditor, WithoutTheRightItIsNotShown)
{
    add(1, "one");
    holdOnly({6});
    EXPECT_TRUE(newEditor()->NotShowable);
    EXPECT_TRUE(editorOf(1)->NotShowable);
    holdOnly({1});
    EXPECT_FALSE(newEditor()->NotShowable);
    EXPECT_TRUE(editorOf(1)->NotShowable);
    holdOnly({2});
    EXPECT_FALSE(editorOf(1)->NotShowable);
}

TEST_F(CalcMethodEditor, WhateverIsPastedDoesNoHarm)
{
    const QString pastes[] = {
        "'; delete from CalcMethod; --", "\" % _ [ ] ? :Code", QString::fromUtf8("😀 نیم\u200cفاصله"),
        QString(10000, QChar(0x0633)),   QString(10000, u'9'), "line\nbreak\ttab",
    };
    int code = 0;
    for (const QString &pasted : pastes) {
        ++code;
        const auto editor = newEditor();
        open(*editor, [&] {
            fill(*editor, "x");
            check(editor->Insurance_CHK, true);
            QApplication::clipboard()->setText(pasted);
            for (auto *input : {editor->Code_EDT, editor->Title_EDT, editor->Comment_EDT,
                                editor->StaffIns_EDT, editor->EmployerIns_EDT, editor->DailyIns_EDT}) {
                input->setFocus();
                input->selectAll();
                Keys::press(editor.get(), Qt::Key_V, Qt::ControlModifier);
                EXPECT_LE(input->text().size(), 60) << input->objectName().toStdString();
            }
            messages.take();
            Keys::press(editor.get(), Qt::Key_F3);
            EXPECT_FALSE(editor->isVisible()) << code;
        });
        EXPECT_EQ(db.text("select count(*) from CalcMethod").toInt(), code);
    }
    EXPECT_EQ(db.text("select Title from CalcMethod where Code=1"), "'; delete from CalcMethod; --");
    EXPECT_EQ(db.text("select Title from CalcMethod where Code=4").size(), 50);
}

} // namespace
