#pragma once

#include "staff/Screens.h"

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "staff/StaffFamily_GetDetil_UNT.h"

using namespace Qt::Literals::StringLiterals;

/// The screen of one family member, and the staff editor's page of them.
class StaffFamily : public StaffScreens {
protected:
    std::unique_ptr<TStaffFamily_GetDetil_FRM> newMember(int staff = 5)
    {
        return std::make_unique<TStaffFamily_GetDetil_FRM>(int(cspStaff), staff);
    }
    std::unique_ptr<TStaffFamily_GetDetil_FRM> member(int id, int staff = 5)
    {
        return std::make_unique<TStaffFamily_GetDetil_FRM>(int(cspStaff), staff, fmEdit, id);
    }
    QString row(int id)
    {
        return db.rows(
            u"select StaffCode,ID,Name,Sex,BirthDate,Death,DeathDate,Comment,Type,InsuranceNumber from "
            "tmpStaffFamily where ID=%1"_s.arg(id));
    }
    static TDetail_Rows_Frame *frame(TStaffGet_FRM &editor)
    {
        return editor.findChild<TDetail_Rows_Frame *>();
    }
    /// Turns to the family page and puts the focus into its grid.
    static void toFamily(TStaffGet_FRM &editor)
    {
        Keys::press(&editor, Qt::Key_4, Qt::ControlModifier);
        frame(editor)->Grid()->setFocus();
    }
    /// Does something in the editor and works in the member's screen that it opens.
    static void inMember(const std::function<void()> &action,
                         const std::function<void(TStaffFamily_GetDetil_FRM &)> &work)
    {
        Keys::runModal(
            [&] {
                action();
                return 0;
            },
            [&](QWidget *screen) {
                Keys::waitFor([&] { return screen->isActiveWindow(); });
                work(dynamic_cast<TStaffFamily_GetDetil_FRM &>(*screen));
            });
    }
    /// Presses a key in the editor and works in the member's screen that it opens.
    static void inMember(TStaffGet_FRM &editor, Qt::Key key, Qt::KeyboardModifiers modifiers,
                         const std::function<void(TStaffFamily_GetDetil_FRM &)> &work)
    {
        inMember([&] { Keys::press(&editor, key, modifiers); }, work);
    }
};
