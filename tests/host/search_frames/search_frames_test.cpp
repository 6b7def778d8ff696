#include "host/search/Search.h"
#include "support/Keys.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/BaseFrame_PKG/Range_Date_Search_Frame.h"
#include "host/BaseFrame_PKG/Tab_Search_Frame.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QKeyEvent>
#include <QTabBar>
#include <QVBoxLayout>

class SearchFrames : public Search {
protected:
    SearchFrames()
    {
        layout = new QVBoxLayout(&window);
        add(1, "odd", 0, "1404/01/05");
        add(2, "even", 0, "1404/02/05");
    }
    void open()
    {
        window.show();
        window.activateWindow();
    }
    QWidget window;
    QVBoxLayout *layout;
};

TEST_F(SearchFrames, TheGeneralFrameBeginsWithTheDefaultItemAndAnEmptyText)
{
    auto *frame = new TGeneral_Search_Frame(&window);
    layout->addWidget(frame);
    open();
    frame->init(&manager);
    EXPECT_EQ(codes(), "1,2") << "init runs the search";
    EXPECT_EQ(frame->Field_CMB()->count(), 4);
    EXPECT_EQ(frame->Field_CMB()->currentText(), u"عنوان"_s);
    Keys::type(frame->Search_EDT(), "od");
    int searches = 0;
    QObject::connect(frame, &TSearch_Frame::searchChanged, &window, [&] { ++searches; });
    EXPECT_TRUE(Keys::waitFor([&] { return searches == 1; })) << "one search for both letters";
    EXPECT_TRUE(manager.IsFiltered());
    frame->init(&manager);
    EXPECT_FALSE(manager.IsFiltered());
    EXPECT_EQ(frame->Search_EDT()->text(), "");
    EXPECT_EQ(codes(), "1,2");
}

TEST_F(SearchFrames, ALongHostileTextDoesNoHarm)
{
    auto *frame = new TGeneral_Search_Frame(&window);
    layout->addWidget(frame);
    open();
    frame->init(&manager);
    frame->Search_EDT()->setText(u"';--\u00e9[%_"_s.repeated(1000));
    Keys::type(frame->Search_EDT(), "x");
    Keys::press(&window, Qt::Key_Return);
    manager.ExecuteFilter_DataSet();
    EXPECT_EQ(codes(), "");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(SearchFrames, TheRangeFrameWaitsForWholeDates)
{
    auto *frame = new TRange_Date_Search_Frame(&window);
    layout->addWidget(frame);
    QObject::connect(frame, &TSearch_Frame::searchChanged, &manager,
                     &TZelmoSearchManager::ExecuteFilter_DataSet);
    open();
    frame->init(&manager, day);
    manager.ExecuteFilter_DataSet();
    Keys::type(frame->FromDate_EDT(), "1404/02");
    EXPECT_FALSE(Keys::waitFor([&] { return manager.IsFiltered(); }, 200));
    Keys::type(frame->FromDate_EDT(), "/01");
    EXPECT_TRUE(Keys::waitFor([&] { return codes() == "2"; }));
    Keys::picture(&window, "range_frame");
    Keys::retype(frame->FromDate_EDT(), "");
    EXPECT_TRUE(Keys::waitFor([&] { return codes() == "1,2"; }));
    Keys::type(frame->ToDate_EDT(), u"۱۴۰۴/۰۱/۳۱"_s);
    EXPECT_TRUE(Keys::waitFor([&] { return codes() == "1"; }));
}

TEST_F(SearchFrames, OnlyTheShownTabsFrameHasItsSay)
{
    auto *tabs = new TTab_Search_Frame(&window);
    auto *general = new TGeneral_Search_Frame(&window);
    auto *dates = new TRange_Date_Search_Frame(&window);
    tabs->AddTab(u"جستجو"_s, general);
    tabs->AddTab(u"تاریخ"_s, dates);
    layout->addWidget(tabs);
    QObject::connect(tabs, &TTab_Search_Frame::tabChanged, &manager,
                     &TZelmoSearchManager::ExecuteFilter_DataSet);
    for (TSearch_Frame *frame : {static_cast<TSearch_Frame *>(general), static_cast<TSearch_Frame *>(dates)})
        QObject::connect(frame, &TSearch_Frame::searchChanged, &manager,
                         &TZelmoSearchManager::ExecuteFilter_DataSet);
    open();
    dates->init(&manager, day);
    general->init(&manager);
    Keys::type(general->Search_EDT(), "odd");
    EXPECT_TRUE(Keys::waitFor([&] { return codes() == "1"; }));
    Keys::picture(&window, "tab_frame");
    tabs->SetCurrentTab(1);
    EXPECT_TRUE(dates->isVisible());
    EXPECT_EQ(codes(), "1,2");
    Keys::type(dates->FromDate_EDT(), "1404/02/01");
    EXPECT_TRUE(Keys::waitFor([&] { return codes() == "2"; }));
    tabs->SetCurrentTab(0);
    EXPECT_EQ(codes(), "1");
}

TEST_F(SearchFrames, ControlAndDigitChooseATab)
{
    auto *tabs = new TTab_Search_Frame(&window);
    layout->addWidget(tabs);
    open();
    QList<int> told;
    QObject::connect(tabs, &TTab_Search_Frame::tabChanged, &window, [&](int tab) { told << tab; });
    tabs->init({u"همه"_s, u"شاغل"_s, u"ترک کار"_s});
    EXPECT_EQ(tabs->CurrentTab(), 0);
    const auto press = [&](Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        return tabs->HandleKey(&event);
    };
    EXPECT_TRUE(press(Qt::Key_3));
    EXPECT_EQ(tabs->CurrentTab(), 2);
    EXPECT_FALSE(press(Qt::Key_4));
    EXPECT_FALSE(press(Qt::Key_0));
    EXPECT_TRUE(press(Qt::Key_2));
    EXPECT_EQ(told, (QList<int>{2, 1}));
}
