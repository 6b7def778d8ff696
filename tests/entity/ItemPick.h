#pragma once

#include "entity/EntityScreens.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"

/// The list opened to pick from, and what it wrote into orders and outputs.
class ItemPick : public EntityScreens {
protected:
    /// Opens the list in select mode; the screen is kept for its results.
    int pick(const QVariant &value, const std::function<void(TFiscalDeducation_List_FRM &)> &work)
    {
        TFiscalDeducation_List_FRM screen(fmSelect, value, {});
        const int result = this->work(screen, [&] { work(screen); });
        code = screen.SelectedCode;
        title = screen.SelectedTitle;
        open = screen.isVisible();
        return result;
    }
    static void goTo(TFiscalDeducation_List_FRM &screen, int item)
    {
        screen.Grid()->setFocus();
        Keys::press(&screen, Qt::Key_Home);
        for (int i = 0; i < 20 && screen.ListQuery()->asInteger("Code") != item; ++i)
            Keys::press(&screen, Qt::Key_Down);
        ASSERT_EQ(screen.ListQuery()->asInteger("Code"), item);
    }
    static void tick(TFiscalDeducation_List_FRM &screen, std::initializer_list<int> items)
    {
        for (const int item : items) {
            goTo(screen, item);
            Keys::press(&screen, Qt::Key_Space);
        }
    }
    static void enter(TFiscalDeducation_List_FRM &screen)
    {
        screen.Grid()->setFocus();
        Keys::press(&screen, Qt::Key_Return);
    }
    /// What a pick of these rows tells that leaves the list open.
    QStringList toldBy(const QVariant &value, std::initializer_list<int> ticked, int current)
    {
        QStringList list;
        pick(value, [&](TFiscalDeducation_List_FRM &screen) {
            tick(screen, ticked);
            goTo(screen, current);
            enter(screen);
            EXPECT_TRUE(screen.isVisible());
            list = messages.take();
            Keys::press(&screen, Qt::Key_Escape);
        });
        return list;
    }
    QString earningsOf(int order)
    {
        return db.rows(QString("select ItemCode,Cost from tmpRecFiscal where RecruitmentCode=%1 order by ID")
                           .arg(order));
    }
    QString deductionsOf(int order)
    {
        return db.rows(
            QString("select ItemCode,Cost from tmpRecDeduction where Recruitmentcode=%1 order by ID")
                .arg(order));
    }
    QString outputs()
    {
        return db.rows("select OutPutCode,ItemCode,Type,Amount from tmpstaffOutPutDetail order by ID");
    }

    int code = 0;
    QString title;
    bool open = false;
};
