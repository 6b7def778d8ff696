#include "calcmethod/Screens.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/database/Query.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

class CalcMethodList : public CalcMethodScreens {
protected:
    CalcMethodList()
    {
        add(1, "one", ",TaxMainCode,Tax,OverTime,Maskok", ",3,1,5,4");
        add(2, "two", ",OverTime,DailyIns", ",5,1234567");
    }
    static TCalcMethodGet_FRM *editor(QWidget *screen) { return qobject_cast<TCalcMethodGet_FRM *>(screen); }
    /// Presses a key that opens the editor, and works in it.
    static void inEditor(QWidget &list, Qt::Key key, const std::function<void(TCalcMethodGet_FRM &)> &work)
    {
        Keys::runModal(
            [&] {
                Keys::press(&list, key);
                return 0;
            },
            [&](QWidget *screen) {
                ASSERT_TRUE(editor(screen));
                Keys::waitFor([&] { return screen->isActiveWindow(); });
                work(*editor(screen));
            });
    }
    QString events()
    {
        return db.rows(u"select SoftwarePart, Permission, EventText from UserEvent "
                       "where EventText not like N'رد شد%' order by ID"_s);
    }
    static void doubleClick(TCalcMethodList_FRM &screen, int row)
    {
        const QRect cell = screen.Grid()->visualRect(screen.Grid()->model()->index(row, 1));
        QTest::mouseClick(screen.Grid()->viewport(), Qt::LeftButton, {}, cell.center());
        QTest::mouseDClick(screen.Grid()->viewport(), Qt::LeftButton, {}, cell.center());
    }
};

TEST_F(CalcMethodList, OpensAtItsLastRowWithColumnsAndCaptions)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        EXPECT_EQ(list.objectName(), "TCalcMethodList_FRM");
        EXPECT_EQ(list.ListQuery()->position(), 1);
        EXPECT_TRUE(list.Grid()->hasFocus());
        EXPECT_EQ(Keys::find<QLabel>(&list, "Caption_PNL")->text(), u"ليست روش هاي محاسباتي"_s);
        struct TExpected {
            QString field, caption;
            int width;
            bool visible;
        };
        const TExpected expected[] = {
            {"Code", u"کد"_s, 43, true},
            {"Title", u"عنوان"_s, 152, true},
            {"StaffIns", u"حق بيمه کارمند"_s, 90, true},
            {"EmployerIns", u"حق بيمه کارفرما"_s, 89, true},
            {"DailyIns", u"سقف بيمه روزانه"_s, 97, true},
            {"TaxTitle", u"عنوان جدول مالياتي"_s, 145, true},
            {"OverTime", u"سقف اضافه کاری"_s, 0, false},
            {"MaskokTitle", u"مانده مسکوک"_s, 0, false},
        };
        const QList<TGridColumn> &columns = list.Grid()->Model()->columns();
        ASSERT_EQ(columns.size(), qsizetype(std::size(expected)));
        for (int i = 0; i < columns.size(); ++i) {
            EXPECT_EQ(columns[i].field, expected[i].field);
            EXPECT_EQ(columns[i].caption, expected[i].caption);
            EXPECT_EQ(columns[i].width, expected[i].width);
            EXPECT_EQ(columns[i].visible, expected[i].visible);
            EXPECT_EQ(list.Grid()->isColumnHidden(i), !expected[i].visible);
            // The last visible one, the tax table's title, fills the rest.
            if (columns[i].visible && columns[i].field != u"TaxTitle") {
                EXPECT_GE(list.Grid()->columnWidth(i), expected[i].width) << columns[i].field.toStdString();
            }
            EXPECT_GE(list.ListQuery()->fieldIndex(columns[i].field), 0) << columns[i].field.toStdString();
        }
        const std::pair<TSmartButton_ZLM *, QString> buttons[] = {
            {list.New_BTN, u"جدید F4"_s},   {list.EDit_BTN, u"ویرایش F5"_s},
            {list.Del_BTN, u"حذف F7"_s},    {list.Select_BTN, u"انتخاب Enter"_s},
            {list.EXit_BTN, u"خروج Esc"_s},
        };
        for (const auto &[button, caption] : buttons)
            EXPECT_EQ(button->text(), caption);
        const auto *model = list.Grid()->model();
        EXPECT_EQ(model->index(0, 5).data().toString(), u"جدول سوم"_s);
        EXPECT_EQ(model->index(1, 4).data().toString(), "1,234,567");
        Keys::picture(&list, "calcmethod_list");
        Keys::press(&list, Qt::Key_Escape);
    });
}

TEST_F(CalcMethodList, AnEmptyListCanOnlyMakeNewMethods)
{
    db.run("delete from CalcMethod");
    TCalcMethodList_FRM list(fmSelect, {});
    open(list, [&] {
        EXPECT_TRUE(list.New_BTN->isEnabled());
        for (auto *button : {list.EDit_BTN, list.Del_BTN, list.Select_BTN})
            EXPECT_FALSE(button->isEnabled());
        for (const auto key : {Qt::Key_F5, Qt::Key_F7, Qt::Key_Return})
            Keys::press(&list, key);
        EXPECT_TRUE(list.isVisible());
        Keys::picture(&list, "calcmethod_list_empty");
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(CalcMethodList, ANewMethodIsListedWhenItsEditorCloses)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        inEditor(list, Qt::Key_F4, [&](TCalcMethodGet_FRM &editor) {
            EXPECT_EQ(editor.Mode(), fmNew);
            Keys::retype(editor.Title_EDT, "three");
            Keys::press(&editor, Qt::Key_2, Qt::ControlModifier);
            Keys::retype(editor.OverTime_EDT, "1");
            Keys::press(&editor, Qt::Key_F3);
        });
        EXPECT_EQ(list.ListQuery()->recordCount(), 3);
        list.ListQuery()->last();
        EXPECT_EQ(list.ListQuery()->asString("Title"), "three");
        EXPECT_EQ(list.focusWidget(), list.Grid());
    });
    EXPECT_EQ(titles(), "1|one\n2|two\n3|three");
}

TEST_F(CalcMethodList, F5EditsTheCurrentMethodAndRefreshesAfterASave)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        Keys::press(&list, Qt::Key_Up);
        inEditor(list, Qt::Key_F5, [&](TCalcMethodGet_FRM &editor) {
            EXPECT_EQ(editor.Mode(), fmEdit);
            EXPECT_EQ(editor.Code_EDT->GetText(), "1");
            EXPECT_EQ(editor.CalcMethodCode_LBL->text(), u"جدول سوم"_s);
            Keys::retype(editor.Title_EDT, "changed");
            Keys::press(&editor, Qt::Key_F3);
        });
        EXPECT_EQ(list.ListQuery()->asInteger("Code"), 1) << "the row stays current";
        EXPECT_EQ(list.ListQuery()->asString("Title"), "changed");
    });
}

TEST_F(CalcMethodList, AnEditorLeftWithoutSavingChangesNothing)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        db.clearTrace();
        inEditor(list, Qt::Key_F5, [&](TCalcMethodGet_FRM &editor) { Keys::press(&editor, Qt::Key_Escape); });
        EXPECT_EQ(db.trace().filter("CalcMethod_VW").size(), db.trace().filter("StoredT").size())
            << "no refresh";
    });
    EXPECT_EQ(titles(), "1|one\n2|two");
}

TEST_F(CalcMethodList, AnEditorThatRefusesToOpenIsNotShown)
{
    holdOnly({6});
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        messages.take();
        Keys::press(&list, Qt::Key_F4);
        Keys::press(&list, Qt::Key_F5);
        EXPECT_EQ(messages.take().size(), 2);
        EXPECT_EQ(QApplication::activeModalWidget(), &list);
    });
}

TEST_F(CalcMethodList, ADeleteAsksRightAndQuestionBeforeTheEventIsWritten)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        holdOnly({1, 2, 6});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.take().size(), 1) << "the host tells about the missing right, nothing is asked";
        EXPECT_EQ(events(), "");
        holdOnly({3});
        messages.answer({No, Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList("MsgDeleteRow()"));
        EXPECT_EQ(events(), "");
        EXPECT_EQ(titles(), "1|one\n2|two");
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList("MsgDeleteRow()"));
        EXPECT_EQ(events(), "813|3|2");
        EXPECT_EQ(titles(), "1|one");
        EXPECT_EQ(list.ListQuery()->recordCount(), 1);
    });
}

TEST_F(CalcMethodList, AMethodThatOrdersReferToStaysAndTheEventIsWrittenAllTheSame)
{
    db.run("insert into Recruitment(Code,CalcMethodCode) values(10,2)");
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        messages.answer({Yes});
        db.clearTrace();
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", u"MsgHasSubRecords(روش)"_s}));
        EXPECT_EQ(events(), "813|3|2");
        EXPECT_EQ(titles(), "1|one\n2|two");
        EXPECT_TRUE(db.trace().join(u'\n').contains("CalcMethod_VW")) << "refreshed all the same";
        EXPECT_EQ(list.ListQuery()->asInteger("Code"), 2);
    });
}

TEST_F(CalcMethodList, ADeleteThatFailsForAnotherReasonTellsItAndBlamesNoReference)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        messages.answer({Yes});
        db.failStatement(4, TFault::Locked); // behind the right, the look at the row and the event's line
        Keys::press(&list, Qt::Key_F7);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), (QStringList{"MsgDeleteRow()", u"MsgHasSubRecords(روش)"_s}));
        EXPECT_EQ(messages.last().text,
                  u"این روش حذف نشد.\n"_s + TDatabaseError(TFault::Locked, {}).userText());
        EXPECT_EQ(titles(), "1|one\n2|two");
        EXPECT_EQ(events(), "813|3|2");
    });
}

TEST_F(CalcMethodList, MethodsAreDeletedOneAfterTheOtherUntilNoneIsLeft)
{
    add(3, "three");
    add(4, "four");
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('3',813,2)"); // no reason to keep it
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        list.Grid()->setCurrentIndex(list.Grid()->model()->index(2, 0));
        messages.answer({No});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(list.Grid()->currentIndex().row(), 2);
        EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
        db.run("delete from CalcMethod where Code=2"); // by another workstation
        for (int left = 2; left >= 0; --left) {
            messages.answer({Yes});
            Keys::press(&list, Qt::Key_F7);
            EXPECT_EQ(list.Grid()->model()->rowCount(), left);
        }
        EXPECT_FALSE(list.Del_BTN->isEnabled());
        Keys::press(&list, Qt::Key_F7);
        Keys::press(&list, Qt::Key_F5);
        EXPECT_EQ(messages.take(), QStringList(4, u"MsgDeleteRow()"_s));
    });
    EXPECT_EQ(db.rows("select EventText from UserEvent order by ID"), "3\n4\n1");
}

TEST_F(CalcMethodList, AFaultAtEachStatementOfADeleteIsToldAndTheNextTryWorks)
{
    holdOnly({3});
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        const struct {
            QStringList told;
            const char *events;
        } tries[] = {{{u"MsgDatabaseError()"_s}, "0"},                          // the right
                     {{u"MsgDatabaseError()"_s}, "0"},                          // whether the row is stored
                     {{u"MsgDeleteRow()"_s, u"MsgDatabaseError()"_s}, "0"},     // the event
                     {{u"MsgDeleteRow()"_s, u"MsgHasSubRecords(روش)"_s}, "1"}}; // the delete
        int n = 0;
        for (const auto &one : tries) {
            db.failStatement(++n);
            if (one.told.size() > 1)
                messages.answer({Yes});
            Keys::press(&list, Qt::Key_F7);
            EXPECT_EQ(messages.take(), one.told);
            EXPECT_EQ(db.text("select count(*) from UserEvent"), one.events);
            EXPECT_EQ(titles(), "1|one\n2|two");
            EXPECT_EQ(list.Grid()->model()->rowCount(), 2);
        }
        db.failStatement(0);
        messages.answer({Yes});
        Keys::press(&list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList(u"MsgDeleteRow()"_s));
    });
    EXPECT_EQ(titles(), "1|one");
}

TEST_F(CalcMethodList, ChoosingGivesCodeAndTitle)
{
    TCalcMethodList_FRM list(fmSelect, {});
    const int result = open(list, [&] {
        Keys::press(&list, Qt::Key_Up);
        Keys::picture(&list, "calcmethod_select");
        Keys::press(&list, Qt::Key_Return);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(list.SelectedCode, 1);
    EXPECT_EQ(list.SelectedTitle, "one");
}

TEST_F(CalcMethodList, LeavingWithEscapeChoosesNothing)
{
    TCalcMethodList_FRM list(fmSelect, {});
    EXPECT_EQ(open(list, [&] { Keys::press(&list, Qt::Key_Escape); }), QDialog::Rejected);
    EXPECT_EQ(list.SelectedCode, 0);
}

TEST_F(CalcMethodList, EnterDoesNothingWhileBrowsingAndADoubleClickEdits)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        EXPECT_FALSE(list.Select_BTN->isEnabled());
        Keys::press(&list, Qt::Key_Return);
        EXPECT_TRUE(list.isVisible());
        Keys::runModal(
            [&] {
                doubleClick(list, 0);
                return 0;
            },
            [&](QWidget *screen) {
                ASSERT_TRUE(editor(screen));
                EXPECT_EQ(editor(screen)->Code_EDT->GetText(), "1");
                Keys::press(screen, Qt::Key_Escape);
            });
    });
}

TEST_F(CalcMethodList, ADoubleClickChoosesInSelectMode)
{
    TCalcMethodList_FRM list(fmSelect, {});
    EXPECT_EQ(open(list, [&] { doubleClick(list, 0); }), QDialog::Accepted);
    EXPECT_EQ(list.SelectedCode, 1);
}

TEST_F(CalcMethodList, TheSearchFindsByTitleAndByTheOtherItems)
{
    add(12, u"روش كارگاهي"_s);
    TCalcMethodList_FRM list(fmBrowse, {});
    open(list, [&] {
        auto *field = list.General_Search->Field_CMB();
        auto *text = list.General_Search->Search_EDT();
        EXPECT_EQ(field->currentText(), u"عنوان"_s);
        const auto found = [&](const QString &typed, const QString &titles) {
            Keys::retype(text, typed);
            QStringList seen;
            const auto listed = [&] {
                seen.clear();
                for (int row = 0; row < list.ListQuery()->recordCount(); ++row)
                    seen << list.ListQuery()->valueAt(row, list.ListQuery()->fieldIndex("Title")).toString();
                return seen.join(u',') == titles;
            };
            EXPECT_TRUE(Keys::waitFor(listed, 2000))
                << typed.toStdString() << ": " << seen.join(u',').toStdString();
        };
        found(u"کارگاهی"_s, u"روش كارگاهي"_s);
        found("ONE", "one");
        found("%", "");
        found("'", "");
        found("", u"one,two,روش كارگاهي"_s);
        field->setCurrentText(u"کد"_s);
        found(u"۱"_s, u"one,روش كارگاهي"_s);
        field->setCurrentText(u"عنوان جدول مالياتي"_s);
        found(u"سوم"_s, "one");
        field->setCurrentText(u"سقف بيمه روزانه"_s);
        found("1,234", "two");
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(CalcMethodList, ADatabaseErrorIsToldAndTheListStaysUsable)
{
    TCalcMethodList_FRM list(fmBrowse, {});
    db.failStatement(1, TFault::ConnectionLost);
    open(list, [&] {
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_TRUE(list.isVisible());
        EXPECT_FALSE(list.EDit_BTN->isEnabled());
        Keys::retype(list.General_Search->Search_EDT(), "one");
        EXPECT_TRUE(Keys::waitFor([&] { return list.ListQuery()->active(); }));
        EXPECT_EQ(list.ListQuery()->recordCount(), 1);
    });
}

} // namespace
