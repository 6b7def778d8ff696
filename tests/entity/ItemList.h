#pragma once

#include "entity/EntityScreens.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"

/// The list of one kind, to keep the items.
class ItemList : public EntityScreens {
protected:
    int list(int kind, const std::function<void(TFiscalDeducation_List_FRM &)> &work)
    {
        TFiscalDeducation_List_FRM screen(fmBrowse, kind, {});
        return this->work(screen, [&] { work(screen); });
    }
    static QStringList codes(TFiscalDeducation_List_FRM &screen)
    {
        QStringList list;
        for (int row = 0; row < screen.ListQuery()->recordCount(); ++row)
            list << QString::number(screen.ListQuery()->keyAt(row));
        return list;
    }
    static void goTo(TFiscalDeducation_List_FRM &screen, int code)
    {
        screen.Grid()->setFocus();
        Keys::press(&screen, Qt::Key_Home);
        while (screen.ListQuery()->asInteger("Code") != code &&
               screen.Grid()->currentIndex().row() < screen.ListQuery()->recordCount() - 1)
            Keys::press(&screen, Qt::Key_Down);
        ASSERT_EQ(screen.ListQuery()->asInteger("Code"), code);
    }
    static void goToGroup(TFiscalDeducation_List_FRM &screen, int code)
    {
        screen.Groups->Grid->setFocus();
        Keys::press(&screen, Qt::Key_Home);
        for (int i = 0; i < 20 && screen.Groups->CurrentCode() != code; ++i)
            Keys::press(&screen, Qt::Key_Down);
        ASSERT_EQ(screen.Groups->CurrentCode(), code);
    }
    static bool columnShown(TFiscalDeducation_List_FRM &screen, const QString &field)
    {
        const auto &columns = screen.Grid()->Model()->columns();
        for (int i = 0; i < columns.size(); ++i)
            if (columns[i].field == field)
                return !screen.Grid()->isColumnHidden(i);
        ADD_FAILURE() << "no column " << field.toStdString();
        return false;
    }
    QString events()
    {
        return db.rows(u"select SoftwarePart,Permission,EventText from UserEvent where Permission=3 "
                       "and EventText not like N'رد شد%'"_s);
    }
};
