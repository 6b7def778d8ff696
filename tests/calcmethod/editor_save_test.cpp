#include "calcmethod/Screens.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"

#include <QClipboard>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

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

        refused(u"MsgRepeatedField(کد|)"_s, editor->Code_EDT, 0);
        Keys::retype(editor->Code_EDT, "11");
        refused(u"MsgRequiredField(عنوان)"_s, editor->Title_EDT, 0);
        Keys::retype(editor->Title_EDT, u"روش یازده"_s);
        refused(u"MsgRequiredField(کد جدول مالياتي)"_s, editor->CalcMethodCode_EDT, 0);
        Keys::retype(editor->CalcMethodCode_EDT, "4");
        refused(u"MsgRequiredField(حق بيمه کارمند)"_s, editor->StaffIns_EDT, 0);
        EXPECT_EQ(editor->CalcMethodCode_LBL->text(), "table four");
        Keys::retype(editor->StaffIns_EDT, "7");
        refused(u"MsgRequiredField(حق بيمه کارفرما)"_s, editor->EmployerIns_EDT, 0);
        Keys::picture(editor.get(), "calcmethod_refused");
        Keys::retype(editor->EmployerIns_EDT, "23");
        refused(u"MsgRequiredField(سقف اضافه کاري)"_s, editor->OverTime_EDT, 1);
        Keys::retype(editor->OverTime_EDT, "100");
        Keys::press(editor.get(), Qt::Key_1, Qt::ControlModifier);
        refused(u"MsgRequiredField(سقف مرخصي)"_s, editor->LeaveCeil_EDT, 1);
        Keys::retype(editor->LeaveCeil_EDT, "2.5");
        refused(u"MsgRequiredField(حداقل کارکرد روزانه)"_s, editor->OutPut_EDT, 1);
        Keys::retype(editor->OutPut_EDT, "7.5");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_FALSE(editor->isVisible());
    });
    EXPECT_EQ(editor->result(), QDialog::Accepted);
    EXPECT_EQ(messages.take(), QStringList(saved));
    EXPECT_EQ(titles(), u"9|nine\n11|روش یازده"_s);
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
        EXPECT_EQ(messages.last().text, u"جدول مالیاتی با این کد ثبت نشده است"_s);
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
        Keys::retype(editor->Title_EDT, u"روش كارگاه"_s);
        check(editor->Tax_CHK, true);
        Keys::retype(editor->CalcMethodCode_EDT, "3");
        editor->Maskok_SPNEDT->setFocus();
        Keys::press(editor.get(), Qt::Key_Up);
        Keys::press(editor.get(), Qt::Key_Up);
        Keys::retype(editor->Comment_EDT, u"شرح"_s);
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
    const QString row = u"42|روش كارگاه|7.5|22|1000|3|1234567|0|2|2.5|8|شرح|1|1|1|1|1|07:30|15:45"_s;
    const QString columns =
        "select Code,Title,StaffIns,EmployerIns,OverTime,TaxMainCode,DailyIns,DecTax,Maskok,"
        "LeaveCeil,OutPut,Comment,Insurance,Tax,BedBes,Loan,OverDis,Entrance,[Exit] "
        "from CalcMethod";
    EXPECT_EQ(db.rows(columns), row);

    const auto again = editorOf(42);
    open(*again, [&] {
        EXPECT_EQ(again->windowTitle(), u"روش محاسباتی"_s);
        EXPECT_EQ(again->CalcMethodCode_LBL->text(), u"جدول سوم"_s);
        EXPECT_EQ(again->MandeMaskok_LBL->text(), "100");
        EXPECT_EQ(again->DailyIns_EDT->text(), "1,234,567");
        EXPECT_EQ(again->OverDis_CMB->currentText(), u"ماهانه"_s);
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
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|)"_s));
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
        EXPECT_EQ(editor->windowTitle(), u"روش محاسباتي"_s);
        Keys::retype(editor->Title_EDT, "second");
        Keys::press(editor.get(), Qt::Key_F3);
    });
    EXPECT_EQ(titles(), "1|first\n2|second");
}

TEST_F(CalcMethodEditor, SaveAndNewBringsEveryOtherDefaultBack)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor, "first");
        check(editor->Insurance_CHK, true);
        Keys::retype(editor->Comment_EDT, "c");
        Keys::retype(editor->EmployerIns_EDT, "23");
        Keys::retype(editor->DailyIns_EDT, "1234567");
        Keys::press(editor.get(), Qt::Key_2, Qt::ControlModifier);
        Keys::retype(editor->Entrance_EDT, "0730");
        Keys::retype(editor->Exit_EDT, "1545");
        editor->OverDis_CMB->setFocus();
        Keys::press(editor.get(), Qt::Key_Down);
        EXPECT_EQ(editor->OverDis_CMB->currentText(), u"ماهانه"_s);
        Keys::retype(editor->OutPut_EDT, "8");
        Keys::retype(editor->LeaveCeil_EDT, "3");
        Keys::press(editor.get(), Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList(saved));
        EXPECT_TRUE(editor->Comment_EDT->IsEmpty());
        EXPECT_EQ(editor->EmployerIns_EDT->GetText(), "20");
        EXPECT_TRUE(editor->DailyIns_EDT->IsEmpty());
        EXPECT_EQ(editor->Entrance_EDT->GetText(), "08:00");
        EXPECT_EQ(editor->Exit_EDT->GetText(), "16:00");
        EXPECT_EQ(editor->OverDis_CMB->currentText(), u"روزانه"_s);
        EXPECT_EQ(editor->OutPut_EDT->text(), "7.33");
        EXPECT_EQ(editor->LeaveCeil_EDT->text(), "2");
        EXPECT_TRUE(editor->IsSaved());
    });
    EXPECT_EQ(messages.unansweredQuestions(), 0);
    EXPECT_EQ(db.rows("select DailyIns, OverDis, LeaveCeil, OutPut, Entrance, [Exit] from CalcMethod"),
              "1234567|1|3|8|07:30|15:45");
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
