#include "calcmethod/Screens.h"

#include <QClipboard>
#include <QGroupBox>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

TEST_F(CalcMethodEditor, ANewMethodHasItsDefaults)
{
    add(6, "six");
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_EQ(editor->objectName(), "TCalcMethodGet_FRM");
        EXPECT_EQ(editor->windowTitle(), u"روش محاسباتي"_s);
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
        EXPECT_EQ(editor->OverDis_CMB->currentText(), u"روزانه"_s);
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
        {"Code_EDT", u"  &کد :"_s},
        {"Title_EDT", u"  &عنوان :"_s},
        {"CalcMethodCode_EDT", u"  کد جدول مالیاتی :"_s},
        {"Maskok_SPNEDT", u"  &مانده مسکوک :"_s},
        {"Comment_EDT", u"  ش&رح :"_s},
        {"StaffIns_EDT", u"  حق بیمه کارم&ند :"_s},
        {"EmployerIns_EDT", u"  حق بیمه کار&فرما :"_s},
        {"DailyIns_EDT", u"  سقف بیمه روزانه& :"_s},
        {"Entrance_EDT", u"  ساعت ورود :"_s},
        {"Exit_EDT", u"  ساعت خروج :"_s},
        {"OverDis_CMB", u"  مبنای اضافه کار / کسر کار :"_s},
        {"OutPut_EDT", u"  حداقل کارکرد روزانه :"_s},
        {"LeaveCeil_EDT", u"  سقف مرخصی :"_s},
        {"OverTime_EDT", u"  سقف اضافه کاری :"_s},
    };
    for (const auto &[name, caption] : captions) {
        auto *label = Keys::find<QLabel>(editor.get(), QString::fromLatin1(name) + "_Caption");
        ASSERT_TRUE(label) << name;
        EXPECT_EQ(label->text(), caption) << name;
        EXPECT_EQ(label->buddy(), Keys::child(editor.get(), name)) << name;
    }
    const std::pair<const char *, QString> boxes[] = {
        {"Tax_CHK", u"م&شمول  مالیات"_s},         {"BedBes_CHK", u"محاسبه بدهکاري / &بستانکاري"_s},
        {"Loan_CHK", u"محاسبه ا&قساط"_s},         {"DecTax_CHK", u"کسر 2.7 مالي&ات"_s},
        {"Insurance_CHK", u"   مشمو&ل بیمه  "_s},
    };
    for (const auto &[name, caption] : boxes)
        EXPECT_EQ(Keys::find<QAbstractButton>(editor.get(), name)->text(), caption) << name;
    const std::pair<const char *, QString> suffixes[] = {
        {"StaffIns_EDT", "%"},        {"EmployerIns_EDT", "%"},
        {"OutPut_EDT", u"ساعت"_s},    {"LeaveCeil_EDT", u"روز در ماه"_s},
        {"OverTime_EDT", u"ساعت "_s},
    };
    for (const auto &[name, suffix] : suffixes)
        EXPECT_EQ(Keys::find<QLabel>(editor.get(), QString::fromLatin1(name) + "_Suffix")->text(), suffix)
            << name;
    EXPECT_EQ(editor->windowTitle(), u"روش محاسباتی"_s);
    EXPECT_EQ(editor->CalcMethod_PC->tabText(0), u"عمومی"_s);
    EXPECT_EQ(editor->CalcMethod_PC->tabText(1), u"حضور و غیاب"_s);
    EXPECT_TRUE(Keys::find<QGroupBox>(editor.get(), "Ins_GRP")->isAncestorOf(editor->Insurance_CHK));
    EXPECT_EQ(editor->OverDis_CMB->itemText(0), u"روزانه"_s);
    EXPECT_EQ(editor->OverDis_CMB->itemText(1), u"ماهانه"_s);
    EXPECT_EQ(editor->Save_BTN->text(), u"ذخيره F3"_s);
    EXPECT_EQ(editor->EXit_BTN->text(), u"خروج Esc"_s);
}

TEST_F(CalcMethodEditor, EveryInputHasItsLimit)
{
    const auto editor = newEditor();
    const std::pair<const TSmartEdit_ZLM *, int> limits[] = {
        {editor->Code_EDT, 15},     {editor->Title_EDT, 50},    {editor->CalcMethodCode_EDT, 6},
        {editor->Comment_EDT, 50},  {editor->StaffIns_EDT, 15}, {editor->EmployerIns_EDT, 15},
        {editor->DailyIns_EDT, 15}, {editor->Entrance_EDT, 5},  {editor->Exit_EDT, 5},
        {editor->OutPut_EDT, 15},   {editor->OverTime_EDT, 15},
    };
    for (const auto &[input, limit] : limits)
        EXPECT_EQ(input->MaxLength(), limit) << input->objectName().toStdString();
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

TEST_F(CalcMethodEditor, ATypedCodeThatAnotherStationsNewRecordHoldsIsNotTaken)
{
    add(3, "three");
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('9',813,2)");
    for (const bool isNew : {true, false}) {
        const auto editor = isNew ? newEditor() : editorOf(3);
        open(*editor, [&] {
            if (isNew)
                fill(*editor);
            Keys::retype(editor->Code_EDT, "9");
            Keys::press(editor.get(), Qt::Key_F3);
            EXPECT_EQ(messages.take(), QStringList(u"MSGInUse(روش محاسباتی)"_s));
            EXPECT_TRUE(editor->isVisible());
            EXPECT_TRUE(editor->Code_EDT->hasFocus());
            EXPECT_EQ(titles(), "3|three");
            // A free one is locked from here on, and given up with the rest.
            Keys::retype(editor->Code_EDT, "8");
            Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
            EXPECT_EQ(messages.take(), QStringList(saved));
            EXPECT_EQ(locks(), "8|813|1\n9|813|2");
        });
        EXPECT_EQ(locks(), "9|813|2");
        EXPECT_EQ(titles(), isNew ? "3|three\n8|m" : "8|three");
        db.run("delete from CalcMethod where Code=8 and Title='m'");
    }
}

TEST_F(CalcMethodEditor, Typing150IntoAShareLeaves15)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Insurance_CHK, true);
        for (auto *share : {editor->StaffIns_EDT, editor->EmployerIns_EDT}) {
            const std::pair<QString, QString> typed[] = {
                {"150", "15"},    {"100", "100"}, {"101", "10"},        {"99.99", "99.99"},
                {"1000", "100"},  {"999", "99"},  {"7.5", "7.5"},       {"100.5", "10.5"},
                {u"۱۵۰"_s, "15"}, {"15", "15"},   {"12.345", "12.345"},
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
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), u"جدول سوم"_s);
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
        Keys::retype(editor->CalcMethodCode_EDT, u"۳"_s);
        Keys::press(editor.get(), Qt::Key_Return);
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), u"جدول سوم"_s);
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
        EXPECT_EQ(messages.last().text, u"جدول مالیاتی با این کد ثبت نشده است"_s);
        EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
        EXPECT_EQ(messages.last().control, editor->CalcMethodCode_EDT);
        Keys::press(editor.get(), Qt::Key_Tab);
        EXPECT_FALSE(editor->CalcMethodCode_EDT->hasFocus());
    });
    EXPECT_EQ(messages.all().size(), 2); // the hint, and the question about the changes
}

TEST_F(CalcMethodEditor, AnUnknownTaxCodeIsToldToo_WhenTheQuestionOfClosingIsAnsweredWithYes)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "99");
        messages.take();
        messages.whenShown(&Keys::leaveAll);
        messages.answer({Yes});
        Keys::press(editor.get(), Qt::Key_Escape);
        EXPECT_EQ(
            messages.take(),
            (QStringList{"MsgNotSaved()", u"ShowTooltipMessage(جدول مالیاتی با این کد ثبت نشده است)"_s}));
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(editor->CalcMethodCode_EDT->GetText(), "");
    });
    EXPECT_EQ(titles(), "");
}

TEST_F(CalcMethodEditor, ATaxTableWithoutATitleIsNotAvailable)
{
    db.run("insert into TaxMain(Code) values(8)");
    const auto editor = newEditor();
    open(*editor, [&] {
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "8");
        Keys::press(editor.get(), Qt::Key_Tab);
        EXPECT_EQ(messages.take(), QStringList(u"MsgCodeNotAvailable(جدول مالياتي)"_s));
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

} // namespace
