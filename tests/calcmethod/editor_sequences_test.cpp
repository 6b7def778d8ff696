#include "calcmethod/Screens.h"

#include <QTabBar>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

TEST_F(CalcMethodEditor, AWrongTaxCodeKeepsItsPageHoweverThePageIsLeft)
{
    db.run("insert into TaxMain(Code) values(8)");
    const auto byDigit = [](TCalcMethodGet_FRM &e) { Keys::press(&e, Qt::Key_2, Qt::ControlModifier); };
    const auto byTab = [](TCalcMethodGet_FRM &e) { Keys::press(&e, Qt::Key_Tab, Qt::ControlModifier); };
    const auto byClick = [](TCalcMethodGet_FRM &e) {
        QTabBar *tabs = e.CalcMethod_PC->tabBar();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    };
    const QString unknown = u"ShowTooltipMessage(جدول مالیاتی با این کد ثبت نشده است)"_s;
    const QString untitled = u"MsgCodeNotAvailable(جدول مالياتي)"_s;
    for (const std::function<void(TCalcMethodGet_FRM &)> &leave :
         {std::function(byDigit), {byTab}, {byClick}}) {
        const auto editor = newEditor();
        open(*editor, [&] {
            check(editor->Tax_CHK, true);
            for (const auto &[code, told] : {std::pair("99", unknown), {"8", untitled}}) {
                Keys::retype(editor->CalcMethodCode_EDT, code);
                leave(*editor);
                EXPECT_EQ(messages.take(), QStringList(told)) << "told once";
                EXPECT_EQ(editor->CalcMethod_PC->currentIndex(), 0);
                EXPECT_TRUE(editor->CalcMethodCode_EDT->hasFocus());
            }
            Keys::retype(editor->CalcMethodCode_EDT, "3");
            leave(*editor);
            EXPECT_EQ(editor->CalcMethod_PC->currentIndex(), 1);
            EXPECT_TRUE(editor->Entrance_EDT->hasFocus());
            EXPECT_EQ(messages.take(), QStringList());
        });
        messages.take();
    }
}

TEST_F(CalcMethodEditor, OneMethodStaysOneThroughManySavesUnderSeveralCodes)
{
    const auto editor = newEditor();
    const int result = open(*editor, [&] {
        fill(*editor, "one");
        Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(editor->Mode(), fmEdit);
        for (const char *code : {"17", "1", "18"}) {
            Keys::retype(editor->Title_EDT, QString("under %1").arg(code));
            Keys::retype(editor->Code_EDT, code);
            Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
            EXPECT_EQ(titles(), QString("%1|under %1").arg(code));
            EXPECT_TRUE(editor->IsSaved());
        }
        Keys::press(editor.get(), Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(editor->Code_EDT->GetText(), "19");
        EXPECT_EQ(locks(), "19|813|1");
        EXPECT_EQ(messages.take(), QStringList({saved, saved, saved, saved, saved}));
        Keys::press(editor.get(), Qt::Key_Escape);
    });
    EXPECT_EQ(result, 1) << "something was saved";
    EXPECT_EQ(titles(), "18|under 18");
    EXPECT_EQ(locks(), "");
}

TEST_F(CalcMethodEditor, AStoredTaxCodeCountsOnlyWhereTaxApplies)
{
    const struct {
        const char *stored; // Tax, TaxMainCode
        const char *shown;
        const char *after;
    } cases[] = {{"1,3", "3", "1|3"},
                 {"0,3", "", "0|0"},
                 {"1,99", "99", "1|99"},
                 {"1,0", "", "1|0"},
                 {"0,null", "", "0|0"}};
    int code = 0;
    for (const auto &one : cases) {
        add(++code, "m", ",Tax,TaxMainCode,OverTime,LeaveCeil,OutPut", QString(",%1,1,1,1").arg(one.stored));
        const auto editor = editorOf(code);
        open(*editor, [&] {
            EXPECT_EQ(messages.take(), QStringList()) << one.stored;
            EXPECT_EQ(editor->CalcMethodCode_EDT->GetText(), one.shown) << one.stored;
            EXPECT_TRUE(editor->IsSaved());
            Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
            const bool missing = editor->Tax_CHK->isChecked() && !*one.shown;
            EXPECT_EQ(messages.take(), QStringList(missing ? u"MsgRequiredField(کد جدول مالياتي)"_s : saved));
            check(editor->Tax_CHK, false);
            check(editor->Tax_CHK, true);
            Keys::press(editor.get(), Qt::Key_F3, Qt::ShiftModifier);
            EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(کد جدول مالياتي)"_s));
        });
        messages.take();
        EXPECT_EQ(db.rows(QString("select Tax, TaxMainCode from CalcMethod where Code=%1").arg(code)),
                  one.after);
    }
}

TEST_F(CalcMethodEditor, WhatAnotherProgramStoredBeyondTheInputsLimitsIsKept)
{
    const QString comment(100, u'ک');
    add(1, "m", ",Comment,OverTime,LeaveCeil,OutPut,StaffIns,DailyIns",
        u",'%1',5000,-1,2000,7.123456789,123456789012.125"_s.arg(comment));
    const auto editor = editorOf(1);
    open(*editor, [&] {
        EXPECT_TRUE(editor->IsSaved());
        Keys::retype(editor->Title_EDT, "n");
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(saved));
    });
    EXPECT_EQ(
        db.rows("select Title, Comment, OverTime, LeaveCeil, OutPut, StaffIns, DailyIns from CalcMethod"),
        u"n|%1|5000|-1|2000|7.123456789|123456789012.125"_s.arg(comment));
}

TEST_F(CalcMethodEditor, AMethodWithoutAnyValueOpensAndIsSaved)
{
    db.run("insert into CalcMethod(Code) values(9)");
    const auto editor = editorOf(9);
    open(*editor, [&] {
        EXPECT_TRUE(editor->IsSaved());
        EXPECT_EQ(editor->MandeMaskok_LBL->text(), "0");
        EXPECT_EQ(editor->OverDis_CMB->currentIndex(), 0);
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(عنوان)"_s));
        Keys::type(editor->Title_EDT, u"ي ی ' "_s);
        Keys::press(editor.get(), Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(saved));
    });
    EXPECT_EQ(titles(), u"9|ي ی ' "_s);
}

} // namespace
