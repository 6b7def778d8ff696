#include "staff/ListScreens.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/BaseFrame_PKG/Range_Date_Search_Frame.h"
#include "host/BaseFrame_PKG/Tab_Search_Frame.h"
#include "host/Component_ZLM/PictureBox_ZLM.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"
#include "support/TestUser.h"

#include <QBuffer>
#include <QMenu>
#include <QPainter>
#include <QPrinter>
#include <QTabBar>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

// The columns of a printed page, counted by the lines of its head.
int columnsOnPage(const TListPrinter &printer, QPrinter &paper, int page)
{
    QImage image(paper.paperRect(QPrinter::DevicePixel).size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    printer.PaintPage(painter, paper, page);
    painter.end();
    const auto dark = [&](int x, int y) { return qGray(image.pixel(x, y)) < 100; };
    for (int y = 0; y < image.height(); ++y) {
        int line = 0;
        for (int x = 0; x < image.width(); ++x)
            line += dark(x, y) ? 1 : 0;
        if (line < image.width() / 4)
            continue;
        int lines = 0; // below the head's upper edge, above its captions
        for (int x = 1; x < image.width(); ++x)
            lines += dark(x, y + 2) && !dark(x - 1, y + 2) ? 1 : 0;
        return lines - 1;
    }
    return 0;
}

} // namespace

TEST_F(StaffList, ItShowsEverybodyAtTheLastRow)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        EXPECT_EQ(list.objectName(), "TStaffList_FRM");
        EXPECT_EQ(list.windowTitle(), u"لیست کارمندان"_s);
        EXPECT_EQ(codes(list), "1 2 3");
        EXPECT_EQ(list.ListQuery()->asInteger("Code"), 3);
        EXPECT_EQ(list.Groups->CurrentCode(), 0);
        EXPECT_FALSE(list.Select_BTN->isEnabled());
        Keys::picture(&list, "staff_list");
    });
}

TEST_F(StaffList, TheGridAndTheSearchHaveTheirTitles)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        EXPECT_EQ(list.Grid()->objectName(), "Staff_List_GRD");
        const QList<TGridColumn> &columns = list.Grid()->Model()->columns();
        QStringList titles;
        for (const TGridColumn &column : columns)
            titles << column.field + '=' + column.caption;
        const QStringList expected = {u"Code=کد"_s,
                                      u"CoDate=تاریخ استخدام"_s,
                                      u"fullnameTitle=نام و نام خانوادگی"_s,
                                      u"PersonnelCode=کد پرسنلی"_s,
                                      u"CardNumber=شماره کارت"_s,
                                      u"DegreeTitle=مدرک"_s,
                                      u"Major=رشته تحصیلی"_s,
                                      u"InsuranceNumber=کد بیمه"_s,
                                      u"MilitaryTitle=وضعیت نظام وظیفه"_s,
                                      u"IsMarriedTitle=وضعیت تاهل"_s,
                                      u"SexTitle=جنسیت"_s,
                                      u"LeaveDate=تاریخ ترک کار"_s,
                                      u"Add1=آدرس"_s,
                                      u"Mob=شماره موبایل"_s,
                                      u"Tel1=تلفن"_s,
                                      u"Comment=شرح"_s,
                                      u"BankTitle=بانک"_s,
                                      u"AccountNumber=شماره حساب"_s,
                                      u"Department=محل خدمت"_s,
                                      u"BirthPlace=محل تولد"_s,
                                      u"BirthDate=تاریخ تولد"_s,
                                      u"IDNumber=شماره شناسنامه"_s,
                                      u"FatherName=نام پدر"_s,
                                      u"NationalID=کد ملی"_s,
                                      u"UserCreated=کاربر ایجاد کننده"_s,
                                      u"UserModified=کاربر تغییر دهنده"_s,
                                      u"CreatedDateTime=زمان ایجاد"_s,
                                      u"ModifiedDateTime=زمان تغییر"_s};
        EXPECT_EQ(titles, expected);
        QStringList searches;
        for (const TSearchItem &item : list.ZelmoSearchManager1->Items()) {
            searches << item.caption;
            EXPECT_GE(list.ListQuery()->fieldIndex(item.field), 0) << item.field.toStdString();
        }
        const QStringList expectedSearches = {u"کد ملی"_s,
                                              u"نام پدر"_s,
                                              u"شماره شناسنامه"_s,
                                              u"تاریخ تولد"_s,
                                              u"محل تولد"_s,
                                              u"محل خدمت"_s,
                                              u"شماره حساب"_s,
                                              u"بانک"_s,
                                              u"شماره تلفن"_s,
                                              u"شماره موبایل"_s,
                                              u"آدرس"_s,
                                              u"تاریخ ترک کار"_s,
                                              u"جنسیت"_s,
                                              u"وضعت تاهل"_s,
                                              u"وضعیت نظام وظیفه"_s,
                                              u"شماره بیمه"_s,
                                              u"رشته تحصیلی"_s,
                                              u"مدرک"_s,
                                              u"شماره کارت"_s,
                                              u"کد پرسنلی"_s,
                                              u"نام و نام خانوادگی"_s,
                                              u"تاریخ استخدام"_s,
                                              u"کد"_s,
                                              u"شرح"_s,
                                              u"کاربر ایجاد کننده"_s,
                                              u"کاربر تغییر دهنده"_s,
                                              u"زمان ایجاد"_s,
                                              u"زمان تغییر"_s};
        EXPECT_EQ(searches, expectedSearches);
        const QList<std::pair<TSmartButton_ZLM *, QString>> buttons = {
            {list.New_BTN, u"جدید F4"_s},
            {list.EDit_BTN, u"ویرایش F5"_s},
            {list.Del_BTN, u"حذف F7"_s},
            {list.Select_BTN, u"انتخاب Enter"_s},
            {list.PrintList_BTN, u"پیش نمایش ليست F9"_s},
            {list.EXit_BTN, u"خروج Esc"_s},
            {list.ShowPicture_BTN, u"µ"_s},
            {list.Groups->Group_BTN, u"گروه کارمندان F11"_s}};
        for (const auto &[button, caption] : buttons)
            EXPECT_EQ(button->text(), caption);
        EXPECT_EQ(list.Groups->Grid->objectName(), "StaffGroup_GRD");
        EXPECT_EQ(list.Groups->Grid->Model()->columns().first().caption, u"نام گروه"_s);
    });
}

TEST_F(StaffList, EveryDetailFieldFindsByTheDatabase)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        for (int i = 0; i < list.ZelmoSearchManager1->Items().size(); ++i) {
            list.General_Search->Field_CMB()->setCurrentIndex(i);
            const auto find = [&](const QString &text) { // Enter does not wait for the next letter
                Keys::retype(list.General_Search->Search_EDT(), text);
                press(list, Qt::Key_Return);
                return list.ListQuery()->recordCount();
            };
            EXPECT_EQ(find(u"هیچ1"_s), 0) << list.ZelmoSearchManager1->Items()[i].caption.toStdString();
            EXPECT_EQ(find({}), 3);
        }
        EXPECT_EQ(messages.take(), QStringList());
    });
}

TEST_F(StaffList, SearchingFindsBothFormsOfYeh)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        Keys::type(list.General_Search->Search_EDT(), u"یزدی"_s);
        EXPECT_TRUE(Keys::waitFor([&] { return codes(list) == "3"; }));
    });
}

TEST_F(StaffList, AGroupNarrowsTheListAndTheGroupOfAllDoesNot)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        toGroup(list, 2);
        EXPECT_EQ(list.Groups->CurrentCode(), 2);
        EXPECT_EQ(codes(list), "2 3");
        db.clearTrace();
        toGroup(list, 0);
        EXPECT_EQ(codes(list), "1 2 3");
        EXPECT_FALSE(db.trace().last().contains("StaffGroup ="));
    });
}

TEST_F(StaffList, TheTabsShowAllTheEmployedAndThoseWhoLeft)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(codes(list), "1 3");
        press(list, Qt::Key_3, Qt::ControlModifier);
        EXPECT_EQ(codes(list), "2");
        toGroup(list, 1);
        EXPECT_EQ(codes(list), "");
        EXPECT_FALSE(list.EDit_BTN->isEnabled());
        press(list, Qt::Key_1, Qt::ControlModifier);
        EXPECT_EQ(codes(list), "1");
        EXPECT_EQ(list.Tab_Search->CurrentTab(), 0);
        Keys::picture(&list, "staff_list_group");
    });
}

TEST_F(StaffList, ARangeOfEmploymentDatesNarrowsTheList)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        Keys::type(list.Range_Date_Search->FromDate_EDT(), "14010101");
        EXPECT_TRUE(Keys::waitFor([&] { return codes(list) == "2 3"; }));
        Keys::type(list.Range_Date_Search->ToDate_EDT(), "14011229");
        EXPECT_TRUE(Keys::waitFor([&] { return codes(list) == "2"; }));
    });
}

TEST_F(StaffList, TheGroupSearchBoxShowsItsHintInGreyAndMovesToTheGroup)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        TSmartEdit_ZLM *box = list.Groups->SearchGroup_EDT;
        EXPECT_EQ(box->text(), u"جستجو ... (Ctrl + F11)"_s);
        EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::gray));
        press(list, Qt::Key_F11, Qt::ControlModifier);
        EXPECT_TRUE(box->hasFocus());
        EXPECT_NE(box->palette().color(QPalette::Text), QColor(Qt::gray));
        Keys::type(box, u"تو"_s);
        EXPECT_EQ(list.Groups->CurrentCode(), 2);
        Keys::retype(box, {});
        list.Grid()->setFocus();
        EXPECT_EQ(box->text(), u"جستجو ... (Ctrl + F11)"_s);
        EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::gray));
        EXPECT_EQ(list.Groups->CurrentCode(), 2);
    });
}

TEST_F(StaffList, ANewEmployeeOpensInTheCurrentGroupAndTheListMovesToItsLastRow)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        toGroup(list, 2);
        inScreen<TStaffGet_FRM>(list, Qt::Key_F4, [&](TStaffGet_FRM &editor) {
            EXPECT_EQ(editor.Mode(), fmNew);
            EXPECT_EQ(editor.Part(), cspStaff);
            EXPECT_EQ(editor.StaffGroup_CMB->Code(), 2);
            type(editor, editor.Name_EDT, "new");
            type(editor, editor.LastName_EDT, "one");
            press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(codes(list), "2 3 4");
        EXPECT_EQ(list.ListQuery()->asInteger("Code"), 4);
    });
}

TEST_F(StaffList, AnEmployeeIsEditedAndTheListReadAnew)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_Up);
        inScreen<TStaffGet_FRM>(list, Qt::Key_F5, [&](TStaffGet_FRM &editor) {
            EXPECT_EQ(editor.Mode(), fmEdit);
            EXPECT_EQ(editor.Code_EDT->GetText(), "2");
            type(editor, editor.Name_EDT, "changed");
            press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(list.ListQuery()->asInteger("Code"), 2);
        EXPECT_EQ(list.ListQuery()->asString("fullnameTitle"), u"changed کریمی"_s);
    });
}

TEST_F(StaffList, DeletingAsksLogsAndDeletes)
{
    addMember(1, 3, "working", "tmpStaffFamily");
    messages.answer({No, Yes});
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_F7);
        EXPECT_EQ(codes(list), "1 2 3");
        press(list, Qt::Key_F7);
        EXPECT_EQ(codes(list), "1 2");
    });
    EXPECT_EQ(messages.last().text,
              u"آیا از حذف این سطر اطمینان دارید؟\nکد: \u20683\u2069 - نام و نام خانوادگی: "
              u"\u2068مریم يزدي\u2069"_s);
    EXPECT_EQ(messages.take(), QStringList({"MsgDeleteRow()", "MsgDeleteRow()"}));
    EXPECT_EQ(db.rows("select SoftwarePart,Permission,EventText from UserEvent"), "806|3|3");
    EXPECT_EQ(working(), "");
}

// The look for the row and for its lock, the event, the delete: nobody goes without a line in the event log.
TEST_F(StaffList, AFaultBeforeTheDeleteDeletesNobody)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        for (int n = 1; n <= 5; ++n) {
            messages.answer({Yes});
            db.failStatement(n, TFault::ConnectionLost);
            press(list, Qt::Key_F7);
            db.failStatement(0);
            EXPECT_EQ(messages.take().last(), n == 5 ? u"MsgHasSubRecords(کارمند)"_s : "MsgDatabaseError()")
                << n;
            EXPECT_TRUE(messages.last().text.contains(TDatabaseError(TFault::ConnectionLost, {}).userText()))
                << n;
            EXPECT_EQ(codes(list), "1 2 3") << n;
            EXPECT_EQ(db.text("select count(*) from Staff"), "3") << n;
            EXPECT_EQ(db.text("select count(*) from UserEvent"), n == 5 ? "1" : "0") << n;
        }
    });
}

TEST_F(StaffList, AListThatWasDeletedEmptyTakesANewEmployee)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        list.ShowPicture_BTN->click();
        messages.answer({Yes, Yes, Yes});
        for (int i = 0; i < 4; ++i)
            press(list, Qt::Key_F7);
        EXPECT_EQ(messages.take().size(), 3);
        EXPECT_EQ(codes(list), "");
        EXPECT_FALSE(list.EDit_BTN->isEnabled());
        inScreen<TStaffGet_FRM>(list, Qt::Key_F4, [&](TStaffGet_FRM &editor) {
            fill(editor);
            press(editor, Qt::Key_F3);
        });
        EXPECT_EQ(codes(list), "1");
        EXPECT_TRUE(list.Del_BTN->isEnabled());
    });
}

TEST_F(StaffList, AnEmployeeThatIsGoneMeanwhileIsNotEditedAndTheListSaysSo)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        db.run("delete from Staff where Code=3");
        press(list, Qt::Key_F5);
        EXPECT_EQ(messages.take(), QStringList("MsgRecordGone()"));
        EXPECT_EQ(codes(list), "1 2") << "it leaves the list";
        EXPECT_EQ(locks(), "");
    });
}

TEST_F(StaffList, AnEmployeeOpenInAnEditorIsNotDeleted)
{
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('3',806,2)");
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList(u"MSGInUse(کارمند)"_s));
        EXPECT_EQ(codes(list), "1 2 3");
    });
    EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
}

TEST_F(StaffList, AnEmployeeWithOrdersIsNotDeleted)
{
    db.run("insert into Recruitment(Code,StaffCode,DoDate) values(1,3,'1402/06/01')");
    messages.answer({Yes});
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList({"MsgDeleteRow()", u"MsgHasSubRecords(کارمند)"_s}));
        EXPECT_EQ(codes(list), "1 2 3");
    });
}

TEST_F(StaffList, DeletingNeedsItsRightAndARow)
{
    SeatUser(TUserInfo{7, "other", "other", false, true});
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_F7);
        EXPECT_EQ(messages.take().size(), 1); // the host told about the refusal
        EXPECT_EQ(codes(list), "1 2 3");
        db.run("delete from Staff");
        toGroup(list, 1);
        press(list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList());
    });
}

TEST_F(StaffList, WithoutTheRightToDeleteNothingIsSaidOfAnOpenEditor)
{
    db.run("insert into CodeLock_TBL(Code,Status,Com_Index) values('3',806,2)");
    SeatUser(TUserInfo{7, "other", "other", false, true});
    with(fmBrowse, [&](TStaffList_FRM &list) {
        press(list, Qt::Key_F7);
        EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
        EXPECT_EQ(codes(list), "1 2 3");
    });
}

TEST_F(StaffList, SelectingKeepsTheEmployeeForTheCaller)
{
    TStaffList_FRM list(fmSelect, {});
    const int result = Keys::runModal([&] { return list.exec(); },
                                      [&](QWidget *) {
                                          EXPECT_TRUE(list.Select_BTN->isEnabled());
                                          Keys::press(&list, Qt::Key_Up);
                                          Keys::press(&list, Qt::Key_Return);
                                      });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(list.SelectedCode, 2);
    EXPECT_EQ(list.SelectedStaffGroup, 2);
    EXPECT_EQ(list.SelectedFullName, u"رضا کریمی"_s);
}

TEST_F(StaffList, ADoubleClickSelectsWhenSomethingIsToBeSelected)
{
    TStaffList_FRM list(fmSelect, {});
    const int result =
        Keys::runModal([&] { return list.exec(); },
                       [&](QWidget *) {
                           const QPoint at =
                               list.Grid()->visualRect(list.Grid()->model()->index(0, 2)).center();
                           QTest::mouseClick(list.Grid()->viewport(), Qt::LeftButton, {}, at);
                           QTest::mouseDClick(list.Grid()->viewport(), Qt::LeftButton, {}, at);
                       });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(list.SelectedCode, 1);
}

TEST_F(StaffList, ADoubleClickEditsWhenNothingIsToBeSelected)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        const QModelIndex index = list.Grid()->model()->index(0, 2);
        Keys::runModal(
            [&] {
                const QPoint at = list.Grid()->visualRect(index).center();
                QTest::mouseClick(list.Grid()->viewport(), Qt::LeftButton, {}, at);
                QTest::mouseDClick(list.Grid()->viewport(), Qt::LeftButton, {}, at);
                return 0;
            },
            [&](QWidget *screen) {
                EXPECT_EQ(dynamic_cast<TStaffGet_FRM &>(*screen).Code_EDT->GetText(), "1");
            });
    });
}

TEST_F(StaffList, ThePicturePanelFollowsTheRows)
{
    QImage image(40, 50, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(image.save(&buffer, "jpeg"));
    setPicture(2, bytes);
    with(fmBrowse, [&](TStaffList_FRM &list) {
        EXPECT_FALSE(list.Pic_Show->isVisible());
        EXPECT_EQ(list.ShowPicture_BTN->toolTip(), u"نمايش تصوير"_s);
        EXPECT_EQ(list.ShowPicture_BTN->palette().color(QPalette::ButtonText), QColor(Qt::black));
        list.ShowPicture_BTN->click();
        EXPECT_TRUE(list.Pic_Show->isVisible());
        EXPECT_EQ(list.ShowPicture_BTN->toolTip(), u"عدم نمايش تصوير"_s);
        EXPECT_EQ(list.ShowPicture_BTN->palette().color(QPalette::ButtonText), QColor(82, 82, 82));
        EXPECT_TRUE(list.Pic_IMG->IsEmpty());
        list.Grid()->setFocus();
        press(list, Qt::Key_Up);
        EXPECT_TRUE(list.Pic_IMG->IsEmpty()); // the row first, its picture after it
        EXPECT_TRUE(Keys::waitFor([&] { return !list.Pic_IMG->IsEmpty(); }));
        EXPECT_TRUE(list.Pic_IMG2->IsEmpty());
        Keys::picture(&list, "staff_list_pictures");
        press(list, Qt::Key_Down);
        EXPECT_TRUE(Keys::waitFor([&] { return list.Pic_IMG->IsEmpty(); }));
        QTest::mouseClick(Keys::child(&list, "ClosePicture_BTN"), Qt::LeftButton);
        EXPECT_FALSE(list.Pic_Show->isVisible());
        EXPECT_EQ(list.ShowPicture_BTN->toolTip(), u"نمايش تصوير"_s);
    });
}

TEST_F(StaffList, TheListIsPreviewedOnAsManyPagesAsItsColumnsNeed)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        inScreen<TListPreview_FRM>(list, Qt::Key_F9, [&](TListPreview_FRM &preview) {
            EXPECT_GT(preview.PageCount(), 1);
            Keys::picture(&preview, "staff_preview");
            press(preview, Qt::Key_PageDown);
            Keys::picture(&preview, "staff_preview_2");
        });
        const TListPrinter printer(list.Grid(), "x");
        QPrinter paper(QPrinter::ScreenResolution);
        paper.setOutputFormat(QPrinter::PdfFormat);
        printer.SetUpPage(paper);
        EXPECT_EQ(paper.pageLayout().orientation(), QPageLayout::Landscape);
        const int pages = printer.PageCount(paper);
        int columns = 0;
        for (int page = 1; page <= pages; ++page)
            columns += columnsOnPage(printer, paper, page);
        EXPECT_EQ(columns, 28 + pages - 1) << "each page after the first repeats the code";
    });
}
