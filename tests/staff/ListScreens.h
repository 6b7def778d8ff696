#pragma once

#include "staff/Screens.h"

#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"
#include "staff/StaffList_UNT.h"

using namespace Qt::Literals::StringLiterals;

/// The staff list on three employees: one in the office, two in production.
class StaffList : public StaffScreens {
protected:
    StaffList()
    {
        add(1, u"علی"_s, u"احمدی"_s, "CoDate='1400/01/01', StaffGroup=1");
        add(2, u"رضا"_s, u"کریمی"_s, "CoDate='1401/06/15', StaffGroup=2, LeaveDate='1403/01/01'");
        add(3, u"مریم"_s, u"يزدي"_s, "CoDate='1402/03/20', StaffGroup=2, Sex=1, IsMarried=1, Degree=4");
    }
    int with(TFormMode mode, const std::function<void(TStaffList_FRM &)> &work)
    {
        TStaffList_FRM list(mode, {});
        return Keys::runModal([&] { return list.exec(); },
                              [&](QWidget *screen) {
                                  Keys::waitFor([&] { return screen->isActiveWindow(); });
                                  work(list);
                              });
    }
    static QString codes(TStaffList_FRM &list)
    {
        QStringList found;
        TQuery *query = list.ListQuery();
        for (int row = 0; row < query->recordCount(); ++row)
            found << QString::number(query->keyAt(row));
        return found.join(' ');
    }
    /// Presses a key and works in the screen of this kind that it opens.
    template <class Screen>
    void inScreen(QWidget &window, Qt::Key key, const std::function<void(Screen &)> &work)
    {
        Keys::runModal(
            [&] {
                Keys::press(&window, key);
                return 0;
            },
            [&](QWidget *screen) {
                Keys::waitFor([&] { return screen->isActiveWindow(); });
                work(dynamic_cast<Screen &>(*screen));
            });
    }
    static void toGroup(TStaffList_FRM &list, int row)
    {
        list.Groups->Grid->setFocus();
        Keys::press(&list, Qt::Key_Home, Qt::ControlModifier);
        for (int i = 0; i < row; ++i)
            Keys::press(&list, Qt::Key_Down);
    }
};
