#include "Screens.h"

#include "app/RightsMatrix_FRM.h"
#include "app/Roles_FRM.h"
#include "app/Users_FRM.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QListWidget>
#include <QTableWidget>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const int auditor = 4;

int ticked(const QTableWidget *table)
{
    int count = 0;
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < table->columnCount(); ++column)
            count += table->item(row, column)->checkState() == Qt::Checked ? 1 : 0;
    return count;
}

/// How many rights a row or a column has; -1 for all rows or columns.
int rightsIn(const QTableWidget *table, int row, int column)
{
    int count = 0;
    for (int r = 0; r < table->rowCount(); ++r)
        for (int c = 0; c < table->columnCount(); ++c)
            count += (row < 0 || r == row) && (column < 0 || c == column) &&
                             table->item(r, c)->flags().testFlag(Qt::ItemIsUserCheckable)
                         ? 1
                         : 0;
    return count;
}

TEST_F(Screens, KeysTickARowAColumnAndAllAndTakeTheTicksAwayAgain)
{
    const int code = user("ali");
    TUserRights_FRM editor({code, "ali", "ali", false, true});
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       QTableWidget *table = editor.Rights_GRD;
                       table->setCurrentCell(2, 1);
                       const std::pair<Qt::Key, int> keys[] = {{Qt::Key_F6, rightsIn(table, 2, -1)},
                                                               {Qt::Key_F7, rightsIn(table, -1, 1)},
                                                               {Qt::Key_F8, int(AllRights().size())}};
                       for (const auto &[key, count] : keys) {
                           Keys::press(screen, key);
                           EXPECT_EQ(ticked(table), count) << key;
                           EXPECT_FALSE(editor.IsSaved());
                           Keys::press(screen, key);
                           EXPECT_EQ(ticked(table), 0) << key;
                       }
                       table->item(2, 1)->setCheckState(Qt::Checked);
                       Keys::press(screen, Qt::Key_F6);
                       EXPECT_EQ(ticked(table), rightsIn(table, 2, -1)) << "what is missing is ticked";
                       Keys::find<QAbstractButton>(screen, "TickAll_BTN")->click();
                       EXPECT_EQ(ticked(table), int(AllRights().size()));
                       EXPECT_FALSE(table->item(2, 1)->data(Qt::AccessibleTextRole).toString().isEmpty());
                       Keys::press(screen, Qt::Key_F3);
                   });
    EXPECT_EQ(RightsOfUser(code).size(), AllRights().size());
}

TEST_F(Screens, RolesAreGivenBesideTheOwnRightsAndShownInThem)
{
    const int code = user("ali");
    TUserRights_FRM editor({code, "ali", "ali", false, true});
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       EXPECT_EQ(editor.Roles_LST->count(), 4);
                       editor.Roles_LST->setFocus();
                       editor.Roles_LST->setCurrentRow(auditor - 1);
                       Keys::press(screen, Qt::Key_Space, Qt::NoModifier, " ");
                       EXPECT_EQ(ticked(editor.Rights_GRD), 0) << "they are the role's";
                       int marked = 0;
                       for (int row = 0; row < editor.Rights_GRD->rowCount(); ++row)
                           for (int column = 0; column < editor.Rights_GRD->columnCount(); ++column)
                               marked += editor.Rights_GRD->item(row, column)->toolTip().contains(u"حسابرس"_s)
                                             ? 1
                                             : 0;
                       EXPECT_GT(marked, 5);
                       EXPECT_LT(marked, int(AllRights().size()));
                       Keys::picture(screen, "user-rights-roles");
                       screen->resize(1024, 700);
                       Keys::picture(screen, "user-rights-1024");
                       Keys::press(screen, Qt::Key_F3);
                   });
    EXPECT_EQ(RolesOfUser(code), QList<int>{auditor});
    EXPECT_EQ(RightsOfUser(code), QList<TRight>());
    EXPECT_TRUE(HoldsPermission({code, "ali", {}, false, true}, cspTax, cpOpen));
    TUserList_FRM list;
    list.Refresh();
    EXPECT_EQ(list.Table()->item(0, 4)->text(), u"حسابرس"_s);
}

TEST_F(Screens, TheRightsOfAnotherUserAreCopiedAndSavedOnlyWhenWanted)
{
    const int ali = user("ali");
    const int zahra = user("zahra");
    EXPECT_EQ(SetRightsAndRoles(zahra, {{cspTax, cpOpen}, {cspStaff, cpNew}}, {auditor}), TLoginResult::Ok);
    const auto copy = [&](bool save) {
        TUserRights_FRM editor({ali, "ali", "ali", false, true});
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *screen) {
                           Keys::runModal(
                               [&] {
                                   Keys::press(screen, Qt::Key_F9);
                                   return 0;
                               },
                               [&](QWidget *pick) {
                                   Keys::picture(pick, "user-pick");
                                   Keys::press(pick, Qt::Key_Return);
                               });
                           EXPECT_EQ(ticked(editor.Rights_GRD), 2);
                           if (!save)
                               messages.answer({TAnswer::No});
                           Keys::press(screen, save ? Qt::Key_F3 : Qt::Key_Escape);
                       });
    };
    copy(false);
    EXPECT_EQ(RightsOfUser(ali), QList<TRight>());
    copy(true);
    EXPECT_EQ(RightsOfUser(ali), RightsOfUser(zahra));
    EXPECT_EQ(RolesOfUser(ali), QList<int>{auditor});
}

TEST_F(Screens, RolesAreMadeChangedAndDeletedByTheirKeys)
{
    const auto edit = [&](int code, const QString &name, Qt::Key tick) {
        TRoleGet_FRM editor(code);
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *screen) {
                           Keys::retype(editor.Name_EDT, name);
                           Keys::press(screen, tick);
                           Keys::picture(screen, "role");
                           Keys::press(screen, Qt::Key_F3);
                           if (screen->isVisible())
                               messages.answer({TAnswer::No});
                       });
        return editor.SavedIdentifier().toInt();
    };
    EXPECT_EQ(edit(0, u"حسابرس"_s, Qt::Key_F8), 0);
    EXPECT_NE(told().find("با این نام"), std::string::npos);
    EXPECT_EQ(edit(0, u"انبار"_s, Qt::Key_F8), 5);
    EXPECT_EQ(ListRoles().last().rights.size(), AllRights().size());
    EXPECT_EQ(edit(5, u"انباردار"_s, Qt::Key_F8), 5);
    EXPECT_EQ(ListRoles().last().rights.size(), 0);
    EXPECT_EQ(ListRoles().last().name, u"انباردار"_s);
    EXPECT_EQ(edit(AdministratorRole, u"سرپرست"_s, Qt::Key_F8), AdministratorRole);
    TRoleList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       EXPECT_EQ(list.Table()->rowCount(), 5);
                       Keys::picture(screen, "roles");
                       messages.answer({TAnswer::Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_NE(told().find("حذف نمی شود"), std::string::npos);
                       EXPECT_EQ(list.Table()->rowCount(), 5);
                       list.Table()->setCurrentCell(4, 0);
                       messages.answer({TAnswer::Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(list.Table()->rowCount(), 4);
                   });
}

TEST_F(Screens, TheMatrixTellsForEachUserWhatHeMayAndWhereItComesFrom)
{
    user("boss2", "secret-b0qx2", true);
    const int ali = user("ali");
    EXPECT_EQ(SetRightsAndRoles(ali, {{cspTax, cpDelete}, {cspTax, cpOpen}}, {auditor}), TLoginResult::Ok);
    const int gone = user("gone");
    EXPECT_EQ(SetRightsAndRoles(gone, {}, {AdministratorRole}), TLoginResult::Ok);
    const int shut = user("shut");
    EXPECT_EQ(SetRightsAndRoles(shut, {{cspTax, cpDelete}}, {}), TLoginResult::Ok);
    run(u"update UserAccount set IsActive=0 where Code=%1"_s.arg(shut));
    TRightsMatrix_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       const auto at = [&](const char *name, TSoftwarePart part, TPermission right) {
                           for (int row = 0; row < list.ListQuery()->recordCount(); ++row) {
                               list.ListQuery()->moveTo(row);
                               if (list.ListQuery()->asString("UserName") == QLatin1String(name) &&
                                   list.ListQuery()->asInteger("Part") == part)
                                   return list.ListQuery()->asString(u"Right%1"_s.arg(int(right)));
                           }
                           return u"?"_s;
                       };
                       EXPECT_EQ(at("boss2", cspTax, cpDelete), u"مدیر سیستم"_s);
                       EXPECT_EQ(at("boss2", cspTax, cpStaffFamilyPage), QString())
                           << "no right of this part";
                       EXPECT_EQ(at("ali", cspTax, cpDelete), u"خود"_s);
                       EXPECT_EQ(at("ali", cspTax, cpOpen), u"حسابرس، خود"_s);
                       EXPECT_EQ(at("ali", cspStaff, cpOpen), u"حسابرس"_s);
                       EXPECT_EQ(at("ali", cspStaff, cpDelete), QString());
                       EXPECT_EQ(at("gone", cspStaff, cpDelete), u"مدیر سیستم"_s);
                       EXPECT_EQ(at("shut", cspTax, cpDelete), QString()) << "who is shut out may nothing";
                       EXPECT_TRUE(Keys::child(screen, "PrintList_BTN")->isVisible());
                       Keys::picture(screen, "rights-matrix");
                   });
}

} // namespace
