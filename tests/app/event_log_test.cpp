#include "Screens.h"

#include "app/Administration_FRM.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/NewBaseForms_PKG/ListExport.h"

#include <QApplication>
#include <QClipboard>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

// What the event log shows is what leaves it.

TEST_F(Screens, TheEventLogCopiesAndExportsTheNamesThatItShows)
{
    SetUserEvent(cspTax, cpDelete, u"جدول یک"_s, false, true);
    SetUserEvent(TSoftwarePart(0), cpEdit, u"کاربر"_s, true, true);
    TEventLog_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       const auto cell = [&](int row, int column) {
                           return list.Grid()->model()->index(row, column).data().toString();
                       };
                       EXPECT_EQ(cell(0, 4), SoftwarePartName(cspTax));
                       EXPECT_EQ(cell(0, 5), PermissionName(cpDelete));
                       EXPECT_EQ(cell(1, 4), u"سیستم"_s);
                       list.Grid()->setFocus();
                       Keys::press(screen, Qt::Key_Home);
                       Keys::press(screen, Qt::Key_C, Qt::ControlModifier);
                       const QStringList copied = QApplication::clipboard()->text().split(u'\t');
                       EXPECT_EQ(copied.value(4), SoftwarePartName(cspTax));
                       EXPECT_EQ(copied.value(5), PermissionName(cpDelete));

                       const QString file = home.filePath("events.xlsx");
                       ASSERT_TRUE(WriteSpreadsheet(list.Grid(), "x", file));
                       QProcess unzip;
                       unzip.start("unzip", {"-p", file, "xl/worksheets/sheet1.xml"});
                       ASSERT_TRUE(unzip.waitForFinished());
                       const QString sheet = QString::fromUtf8(unzip.readAllStandardOutput());
                       EXPECT_TRUE(sheet.contains(SoftwarePartName(cspTax)));
                       EXPECT_TRUE(sheet.contains(PermissionName(cpDelete)));
                   });
}
