#include "host/controls/Form.h"
#include "support/TestDatabase.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/Component_ZLM/DetailStrip_ZLM.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/database/Query.h"

#include <QLabel>
#include <QScrollBar>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace {

const QList<TGridColumn> fields = {{"Name", u"نام"_s}, {"Cost", u"مبلغ"_s, 0, true, TGridColumn::Money}};

} // namespace

class DetailRows : public testing::Test {
protected:
    DetailRows() : query(&db.connection(), "rows")
    {
        db.run("create table Item(ID integer not null primary key, Name nvarchar(50), Cost float)");
        for (int i = 1; i <= 100; ++i)
            db.run(
                QString("insert into Item(ID, Name, Cost) values(%1, 'item %1', %2)").arg(i).arg(i * 1000.5));
        query.setStatement("select * from Item order by Cost");
        query.open();
    }
    ~DetailRows() override { LayoutStore::setValue("QWidget/Strip", {}); }
    TestDatabase db;
    TQuery query;
};

TEST_F(DetailRows, TheStripFollowsTheCurrentRow)
{
    Form form;
    auto *strip = form.add(new TDetailStrip_ZLM(nullptr, "Strip", u"سطر"_s, &query, fields, 2));
    form.open();
    EXPECT_EQ(strip->ShownText("Name"), "item 1");
    EXPECT_EQ(strip->ShownText("cost"), "1,000.5");
    query.moveTo(1);
    EXPECT_EQ(strip->ShownText("Cost"), "2,001");
    query.close();
    EXPECT_EQ(strip->ShownText("Cost"), "");
    db.run("delete from Item");
    query.open();
    EXPECT_EQ(strip->ShownText("Name"), "");
}

TEST_F(DetailRows, TheStripShowsMarkupAsItStands)
{
    db.run("update Item set Name='<b>x</b>' where ID=1");
    query.close();
    query.open();
    TDetailStrip_ZLM strip(nullptr, "Strip", u"سطر"_s, &query, fields, 2);
    EXPECT_EQ(strip.ShownText("Name"), "<b>x</b>");
    EXPECT_EQ(strip.findChild<QLabel *>("Name_LBL")->textFormat(), Qt::PlainText);
}

TEST_F(DetailRows, TheStripRemembersItsFoldAndItsFields)
{
    {
        Form form;
        auto *strip = form.add(new TDetailStrip_ZLM(nullptr, "Strip", u"سطر"_s, &query, fields, 2));
        form.open();
        strip->SetFieldShown("Cost", false);
        QTest::mouseClick(strip->findChild<QToolButton *>(), Qt::LeftButton);
        EXPECT_FALSE(strip->IsExpanded());
    }
    Form form;
    auto *strip = form.add(new TDetailStrip_ZLM(nullptr, "Strip", u"سطر"_s, &query, fields, 2));
    form.open();
    EXPECT_FALSE(strip->IsExpanded());
    QTest::mouseClick(strip->findChild<QToolButton *>(), Qt::LeftButton);
    EXPECT_TRUE(strip->IsExpanded());
    EXPECT_TRUE(strip->findChild<QLabel *>("Name_LBL")->isVisible());
    EXPECT_FALSE(strip->findChild<QLabel *>("Cost_LBL")->isVisible());
}

TEST_F(DetailRows, KeysInTheGridAskForTheActions)
{
    Form form;
    auto *rows =
        form.add(new TDetail_Rows_Frame(nullptr, "Rows", {"new", "edit", "delete"}, {"A", "E", "D"}, true));
    rows->SetColumns(&query, fields);
    QString asked;
    QObject::connect(rows, &TDetail_Rows_Frame::addRow, rows, [&] { asked += 'a'; });
    QObject::connect(rows, &TDetail_Rows_Frame::editRow, rows, [&] { asked += 'e'; });
    QObject::connect(rows, &TDetail_Rows_Frame::deleteRow, rows, [&] { asked += 'd'; });
    form.open();
    rows->Grid()->setFocus();
    Keys::press(&form, Qt::Key_Plus, Qt::KeypadModifier);
    Keys::press(&form, Qt::Key_Asterisk, Qt::KeypadModifier);
    Keys::press(&form, Qt::Key_Return);
    Keys::press(&form, Qt::Key_Enter, Qt::KeypadModifier);
    Keys::press(&form, Qt::Key_Delete);
    Keys::press(&form, Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(asked, "aeeedd");
    asked.clear();
    // The keys of the letters' block are no actions, nor is anything with Ctrl.
    Keys::press(&form, Qt::Key_Plus);
    Keys::press(&form, Qt::Key_Minus);
    Keys::press(&form, Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(asked, "");
    db.run("delete from Item");
    rows->Reread("ID");
    Keys::press(&form, Qt::Key_Return);
    Keys::press(&form, Qt::Key_Delete);
    EXPECT_EQ(asked, "");
    EXPECT_FALSE(rows->EditRow->isEnabled());
    EXPECT_FALSE(rows->DelRow->isEnabled());
    Keys::press(&form, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(asked, "a");
}

TEST_F(DetailRows, ReadingAgainKeepsTheRowAndTheView)
{
    Form form;
    auto *rows =
        form.add(new TDetail_Rows_Frame(nullptr, "Rows", {"new", "edit", "delete"}, {"A", "E", "D"}, true));
    rows->SetColumns(&query, fields);
    form.open();
    query.moveTo(60);
    const int scrolled = rows->Grid()->verticalScrollBar()->value();
    EXPECT_GT(scrolled, 0);
    rows->Reread("ID");
    EXPECT_EQ(query.position(), 60);
    EXPECT_EQ(rows->Grid()->verticalScrollBar()->value(), scrolled);
    rows->Reread("ID", 62);
    EXPECT_EQ(query.asInteger("ID"), 62);
    db.run("delete from Item where ID=62");
    rows->Reread("ID");
    EXPECT_EQ(query.asInteger("ID"), 63); // the one that has its place
    query.last();
    db.run("delete from Item where ID=100");
    rows->Reread("ID");
    EXPECT_EQ(query.asInteger("ID"), 99);
}
