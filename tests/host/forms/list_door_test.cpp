#include "host/forms/FakeScreens.h"

#include "host/Component_ZLM/LayoutStore.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/NewBaseForms_PKG/ListExport.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"
#include "host/Utility_ZLM/PrivateFile.h"
#include "support/TestUser.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

QFile::Permissions userOnly()
{
    return QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
}

} // namespace

/// Whoever takes a list out of the program needs the right to print, and is named in the log.
class ListDoor : public Things {
protected:
    ListDoor() : list(&db.connection(), "List_QUR")
    {
        list.setKeyField("Code");
        for (int code = 1; code <= 3; ++code)
            db.run(u"insert into Thing(Code, Title) values(%1, 'thing')"_s.arg(code));
        SeatUser({5, "maryam", {}, false, true});
        QApplication::clipboard()->setText("before");
    }
    void may() { db.run("insert into UserRight(UserCode, SoftwarePart, Permission) values(5, 813, 4)"); }
    void inList(const std::function<void(TThingList_FRM &)> &work)
    {
        TThingList_FRM screen(fmBrowse, &list);
        screen.SetListPart(cspCalcMethod);
        Keys::runModal([&] { return screen.exec(); },
                       [&](QWidget *) {
                           Keys::waitFor([&] { return screen.isActiveWindow(); });
                           messages.take();
                           work(screen);
                       });
    }
    QString lastEvent() { return db.text("select EventText from UserEvent order by ID desc"); }
    TQuery list;
};

TEST_F(ListDoor, ThePreviewStaysShutWithoutTheRightToPrint)
{
    inList([&](TThingList_FRM &screen) {
        Keys::press(&screen, Qt::Key_F9);
        EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
        EXPECT_EQ(lastEvent(), u"رد شد: این کاربر این دسترسی را ندارد"_s);
        EXPECT_EQ(db.text("select Permission from UserEvent order by ID desc"), "4");
    });
}

TEST_F(ListDoor, TheSpreadsheetStaysShutWithoutTheRightToPrint)
{
    inList([&](TThingList_FRM &screen) {
        Keys::press(&screen, Qt::Key_E, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
    });
}

TEST_F(ListDoor, ThePreviewOfWhoMayPrintIsInTheLogWithListAndRows)
{
    may();
    inList([&](TThingList_FRM &screen) {
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_F9);
                return 0;
            },
            [&](QWidget *preview) { Keys::press(preview, Qt::Key_Escape); });
        EXPECT_EQ(messages.take(), QStringList());
        EXPECT_EQ(lastEvent(), u"پیش نمایش از «ليست مزايا»، 3 سطر"_s);
        EXPECT_EQ(db.rows("select UserName, SoftwarePart, Permission from UserEvent order by ID desc"),
                  "maryam|813|4");
    });
}

TEST_F(ListDoor, APreviewThatStandsOpenWritesNoFileOnceTheRightIsGone)
{
    may();
    inList([&](TThingList_FRM &screen) {
        TListPreview_FRM preview(screen.Grid(), {cspCalcMethod, screen.windowTitle()}, &screen);
        QTemporaryDir folder;
        const QString file = folder.filePath("list.pdf");
        db.run("delete from UserRight");
        EXPECT_FALSE(preview.ExportPdf(file));
        EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
        EXPECT_FALSE(QFile::exists(file));
        may();
        EXPECT_TRUE(preview.ExportPdf(file));
        EXPECT_EQ(lastEvent(), u"خروجی PDF از «ليست مزايا»، 3 سطر در %1"_s.arg(file));
        EXPECT_EQ(QFile::permissions(file), userOnly());
    });
}

TEST_F(ListDoor, WhatCannotBeRecordedDoesNotLeave)
{
    may();
    inList([&](TThingList_FRM &screen) {
        TListPreview_FRM preview(screen.Grid(), {cspCalcMethod, screen.windowTitle()}, &screen);
        QTemporaryDir folder;
        db.failStatement(2, TFault::DiskFull); // behind the question for the right
        EXPECT_FALSE(preview.ExportPdf(folder.filePath("list.pdf")));
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_FALSE(QFile::exists(folder.filePath("list.pdf")));
    });
}

TEST_F(ListDoor, ManyRowsAreCopiedByThoseWhoMayPrintAndOneByAll)
{
    db.run("delete from UserEvent");
    inList([&](TThingList_FRM &screen) {
        screen.Grid()->SetMultiSelect(true);
        Keys::press(screen.Grid(), Qt::Key_C, Qt::ControlModifier);
        EXPECT_TRUE(QApplication::clipboard()->text().startsWith("3\t"));
        EXPECT_EQ(db.text("select count(*) from UserEvent"), "0");
        QApplication::clipboard()->setText("before");
        Keys::press(screen.Grid(), Qt::Key_Up, Qt::ShiftModifier);
        ASSERT_EQ(screen.Grid()->SelectedRows().size(), 2);
        Keys::press(screen.Grid(), Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList("MsgNoPermission()"));
        EXPECT_EQ(QApplication::clipboard()->text(), "before");
        may();
        Keys::press(screen.Grid(), Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 1);
        EXPECT_EQ(lastEvent(), u"کپی سطرها از «ليست مزايا»، 2 سطر"_s);
    });
}

TEST_F(ListDoor, ASpreadsheetIsTheUsersAlone)
{
    inList([&](TThingList_FRM &screen) {
        QTemporaryDir folder;
        const QString file = folder.filePath("list.xlsx");
        ASSERT_TRUE(WriteSpreadsheet(screen.Grid(), "x", file));
        EXPECT_EQ(QFile::permissions(file), userOnly());
        // Also over one that others may read, and while it is written.
        ASSERT_TRUE(QFile::setPermissions(file, userOnly() | QFile::ReadOther | QFile::ReadGroup));
        ASSERT_TRUE(WriteSpreadsheet(screen.Grid(), "x", file, [&](int) {
            EXPECT_EQ(QFile::permissions(file + ".part"), userOnly());
            return true;
        }));
        EXPECT_EQ(QFile::permissions(file), userOnly());
    });
}

TEST(PrivateFiles, AFileThatOthersCouldReadIsTakenAwayFromThemAndKeepsItsContents)
{
    QTemporaryDir folder;
    const QString name = folder.filePath("new/layout.ini");
    ASSERT_TRUE(PrivateFile::keep(name));
    EXPECT_EQ(QFile::permissions(name), userOnly());
    EXPECT_EQ(QFile::permissions(folder.filePath("new")) & (QFile::ReadOther | QFile::ReadGroup),
              QFile::Permissions());
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
    file.close();
    ASSERT_TRUE(QFile::setPermissions(name, userOnly() | QFile::ReadOther));
    ASSERT_TRUE(PrivateFile::keep(name));
    EXPECT_EQ(QFile::permissions(name), userOnly());
    EXPECT_EQ(QFile(name).size(), 1);
    ASSERT_TRUE(PrivateFile::make(name));
    EXPECT_EQ(QFile(name).size(), 0);
    EXPECT_FALSE(PrivateFile::make(folder.filePath("none/such/file")));
}

TEST_F(ListDoor, TheLayoutIsTheUsersAlone)
{
    QTemporaryDir folder;
    const QString before = IniOptions.FileName;
    IniOptions.FileName = folder.filePath("ketebionpap.ini");
    LayoutStore::setValue("x/y", "z");
    EXPECT_EQ(QFile::permissions(folder.filePath("layout.ini")), userOnly());
    EXPECT_EQ(LayoutStore::value("x/y").toString(), "z");
    IniOptions.FileName = before;
}
