#include "Screens.h"

#include "app/Administration_FRM.h"
#include "app/MainWindow.h"
#include "app/PickTarget_FRM.h"
#include "app/SampleCompany.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Rights_unt.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"
#include "support/TestUser.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const int clerk = 77;

/// Every door of every list, made from the entries that there are and the buttons that their screens have: it opens with
/// its right alone, and stays shut with all other rights, told in the host's words.
class RightsMatrix : public Screens {
protected:
    RightsMatrix() : Screens(TestDatabase::FileAlways)
    {
        FillSampleCompany(session.connection());
        SeatUser({clerk, "maryam", {}, false, true});
    }
    void hold(const QList<TRight> &rights)
    {
        TTransaction transaction(session.connection());
        run("delete from UserRight");
        for (const TRight &right : rights)
            run(u"insert into UserRight(UserCode, SoftwarePart, Permission) values(%1, %2, %3)"_s.arg(clerk)
                    .arg(int(right.part))
                    .arg(int(right.right)));
        transaction.commit();
    }
    /// Every right that is offered but one.
    static QList<TRight> allBut(const TRight &one)
    {
        QList<TRight> rights;
        for (const TRightName &row : AllRights())
            if (!(row.right == one))
                rights << row.right;
        return rights;
    }

    /// What a press brought: the class of the screen on top of `screen` or the operation of the first message.
    QString outcome(QWidget *screen, const std::function<void()> &press)
    {
        messages.take();
        messages.answer({TAnswer::No}); // to the question of a delete
        QString opened;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            QWidget *top = QApplication::activeModalWidget();
            if (!top || top == screen)
                return;
            if (opened.isEmpty())
                opened = QString::fromLatin1(top->metaObject()->className());
            if (auto *dialog = qobject_cast<QDialog *>(top))
                dialog->reject();
        });
        poll.start(2);
        press();
        poll.stop();
        const QStringList told = messages.take();
        if (told.contains("MsgNoPermission()"_L1))
            return u"refused"_s + (opened.isEmpty() ? QString() : u" but opened "_s + opened);
        if (!opened.isEmpty())
            return opened;
        return told.isEmpty() ? u"nothing"_s : told.first();
    }
    void inList(const TEntryPoint &entry, const std::function<void(TBaseDock_FRM &)> &work)
    {
        Keys::runModal([&] { return session.callEntry(entry, entry.usualArguments); },
                       [&](QWidget *screen) {
                           auto *list = qobject_cast<TBaseDock_FRM *>(screen);
                           ASSERT_TRUE(list) << entry.name;
                           Keys::waitFor([&] { return list->isActiveWindow(); });
                           work(*list);
                       });
    }
    /// The item of the grid's menu that has this text, chosen as a user does; the menu closes by it.
    static void choose(TBaseDock_FRM &list, const QString &text)
    {
        QTimer::singleShot(0, &list, [text] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            for (QAction *item : menu->actions()) {
                if (item->text() == text) {
                    menu->close();
                    item->trigger();
                    return;
                }
            }
            menu->close();
            ADD_FAILURE() << "the menu lacks " << text.toStdString();
        });
        Q_EMIT list.Grid()->customContextMenuRequested({5, 5});
    }

    struct TDoor {
        const char *button; ///< null: a key alone
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        TPermission right;
        QString menuText; ///< of the grid's menu; empty: the button's
    };
    static QList<TDoor> doors()
    {
        return {{"New_BTN", Qt::Key_F4, Qt::NoModifier, cpNew, {}},
                {"EDit_BTN", Qt::Key_F5, Qt::NoModifier, cpEdit, {}},
                {"Del_BTN", Qt::Key_F7, Qt::NoModifier, cpDelete, {}},
                {"PrintList_BTN", Qt::Key_F9, Qt::NoModifier, cpPrint, {}},
                {nullptr, Qt::Key_E, Qt::ControlModifier, cpPrint, u"ذخیره در صفحه گسترده Ctrl+E"_s}};
    }
    /// The part whose rights the buttons of an entry's list ask for.
    static TSoftwarePart partOf(const TEntryPoint &entry)
    {
        if (QLatin1String(entry.name) == "Select_StaffGroup"_L1)
            return cspStaffGroup;
        if (QLatin1String(entry.name) == "Select_DeductionList"_L1)
            return cspDeduction; // its door asks for that of the earnings
        return TSoftwarePart(entry.part);
    }
    static QList<const TEntryPoint *> lists()
    {
        QList<const TEntryPoint *> list;
        for (const TEntryPoint &entry : EntryPoints::all())
            if (entry.part != cspPayrollInfo)
                list << &entry;
        return list;
    }
    /// The outcomes of a door by its key, its button and its item of the menu.
    QStringList ways(TBaseDock_FRM &list, const TDoor &door)
    {
        auto *button = door.button ? list.findChild<TSmartButton_ZLM *>(QLatin1String(door.button)) : nullptr;
        if (door.button && (!button || button->isHidden() || !button->isEnabled()))
            return {};
        list.Grid()->setFocus();
        QStringList outcomes{outcome(&list, [&] { Keys::press(&list, door.key, door.modifiers); })};
        if (button)
            outcomes << outcome(&list, [&] { button->click(); });
        const QString text = button ? button->text() : door.menuText;
        outcomes << outcome(&list, [&] { choose(list, text); });
        return outcomes;
    }
};

} // namespace

TEST_F(RightsMatrix, EveryButtonKeyAndMenuItemOfEveryListStaysShutWithAllRightsButItsOwn)
{
    int tried = 0;
    for (const TEntryPoint *entry : lists()) {
        for (const TDoor &door : doors()) {
            hold(allBut({partOf(*entry), door.right}));
            inList(*entry, [&](TBaseDock_FRM &list) {
                for (const QString &way : ways(list, door)) {
                    EXPECT_EQ(way, u"refused"_s)
                        << entry->name << " " << PermissionName(door.right).toStdString();
                    EXPECT_TRUE(messages.last().text.contains(SoftwarePartName(partOf(*entry))))
                        << messages.last().text.toStdString();
                    EXPECT_TRUE(messages.last().text.contains(PermissionName(door.right)));
                    ++tried;
                }
            });
        }
    }
    EXPECT_GT(tried, 100);
}

TEST_F(RightsMatrix, EveryButtonKeyAndMenuItemOfEveryListOpensWithItsRightAlone)
{
    int tried = 0;
    for (const TEntryPoint *entry : lists()) {
        for (const TDoor &door : doors()) {
            hold({{TSoftwarePart(entry->part), cpOpen}, {partOf(*entry), door.right}});
            inList(*entry, [&](TBaseDock_FRM &list) {
                for (const QString &way : ways(list, door)) {
                    EXPECT_FALSE(way.startsWith("refused"_L1) || way == "nothing"_L1)
                        << entry->name << " " << PermissionName(door.right).toStdString() << ": "
                        << way.toStdString();
                    ++tried;
                }
            });
        }
    }
    EXPECT_GT(tried, 100);
}

TEST_F(RightsMatrix, EveryEntryStaysShutWithAllRightsButItsOwn)
{
    for (const TEntryPoint &entry : EntryPoints::all()) {
        if (entry.part == 0)
            continue; // open to all
        hold(allBut({TSoftwarePart(entry.part), cpOpen}));
        EXPECT_FALSE(EntryPoints::mayOpen(entry)) << entry.name;
        EXPECT_EQ(outcome(nullptr, [&] { session.callEntry(entry, entry.usualArguments); }), u"refused"_s)
            << entry.name;
        hold({{TSoftwarePart(entry.part), cpOpen}});
        EXPECT_TRUE(EntryPoints::mayOpen(entry)) << entry.name;
        const QString opened = outcome(nullptr, [&] { session.callEntry(entry, entry.usualArguments); });
        EXPECT_TRUE(opened.startsWith(u'T')) << entry.name << ": " << opened.toStdString();
    }
}

TEST_F(RightsMatrix, TheMainWindowShowsTheMenusAndButtonsOfTheRightsAndOfNoOthers)
{
    for (const TEntryPoint &entry : EntryPoints::all()) {
        if (entry.part == 0)
            continue;
        hold({{TSoftwarePart(entry.part), cpOpen}});
        const TMain_FRM window(session);
        for (const TEntryPoint &shown : EntryPoints::all()) {
            const bool may = shown.part == 0 || shown.part == entry.part;
            EXPECT_EQ(window.findChild<QAction *>(QLatin1String(shown.name)) != nullptr, may) << shown.name;
            const QString button = QLatin1String(shown.name) + "_BTN"_L1;
            EXPECT_EQ(window.findChild<QPushButton *>(button) != nullptr, may && !shown.isSelect())
                << shown.name;
        }
        EXPECT_FALSE(window.findChild<QMenu *>("Administration_MNU"));
    }
}

TEST_F(RightsMatrix, EveryPartWithAListOffersTheRightToPrint)
{
    for (const TEntryPoint *entry : lists()) {
        bool offered = false;
        for (const TRightName &row : AllRights())
            offered = offered || row.right == TRight{partOf(*entry), cpPrint};
        EXPECT_TRUE(offered) << entry->name;
    }
}

// --- the administration

TEST_F(RightsMatrix, TheMenusFollowAnAdministratorWhoIsDemotedAndOneWhoIsMade)
{
    SeatUser({clerk, "maryam", {}, true, true});
    TMain_FRM window(session);
    window.show();
    ASSERT_TRUE(window.findChild<QMenu *>("Administration_MNU"));
    run(u"update UserAccount set IsAdmin=0 where Code=%1"_s.arg(clerk));
    Q_EMIT window.findChild<QMenu *>("File_MNU")->aboutToShow();
    EXPECT_TRUE(Keys::waitFor([&] { return !window.findChild<QMenu *>("Administration_MNU"); }));
    EXPECT_FALSE(window.findChild<QAction *>("Open_TaxList"));
    run(u"update UserAccount set IsAdmin=1 where Code=%1"_s.arg(clerk));
    Q_EMIT window.findChild<QMenu *>("File_MNU")->aboutToShow();
    EXPECT_TRUE(Keys::waitFor([&] { return window.findChild<QMenu *>("Administration_MNU") != nullptr; }));
}

TEST_F(RightsMatrix, EveryItemOfTheAdministrationStaysShutForWhoWasDemotedSinceTheMenuOpened)
{
    for (const char *name : {"Users_ACT", "Events_ACT", "Locks_ACT", "Workstations_ACT", "Restore_ACT"}) {
        SeatUser({clerk, "maryam", {}, true, true});
        TMain_FRM window(session);
        window.show();
        auto *item = window.findChild<QAction *>(name);
        ASSERT_TRUE(item) << name;
        run(u"update UserAccount set IsAdmin=0 where Code=%1"_s.arg(clerk));
        const QString told = outcome(nullptr, [&] { item->trigger(); });
        EXPECT_TRUE(told.startsWith("ShowSmartMessage("_L1)) << name << ": " << told.toStdString();
        EXPECT_TRUE(messages.last().text.contains(u"مدیر فعال سیستم"_s));
        EXPECT_TRUE(text("select EventText from UserEvent order by ID desc").startsWith(u"رد شد: "_s));
        EXPECT_TRUE(Keys::waitFor([&] { return !window.findChild<QMenu *>("Administration_MNU"); }));
    }
}

TEST_F(RightsMatrix, LocksAndWorkstationsAreTakenAwayByWhoIsAnAdministratorAtThatMoment)
{
    SeatUser({clerk, "maryam", {}, true, true});
    ASSERT_TRUE(RegisterWorkstation(5, "far away"));
    run("insert into CodeLock_TBL(Code, Status, Com_Index) values('17', 806, 5)");
    const auto stays = [&](TSmallList_FRM &list, const char *sql) {
        const QString before = text(sql);
        Keys::runModal([&] { return list.exec(); },
                       [&](QWidget *screen) {
                           Keys::press(screen, Qt::Key_End);
                           run(u"update UserAccount set IsAdmin=0 where Code=%1"_s.arg(clerk));
                           messages.take();
                           Keys::press(screen, Qt::Key_F7);
                           EXPECT_EQ(messages.take().size(), 1) << "no question";
                           EXPECT_TRUE(messages.last().text.contains(u"مدیر فعال سیستم"_s));
                           // Demoted while the question stands.
                           run(u"update UserAccount set IsAdmin=1 where Code=%1"_s.arg(clerk));
                           messages.whenShown(
                               [&] { run(u"update UserAccount set IsAdmin=0 where Code=%1"_s.arg(clerk)); });
                           messages.answer({TAnswer::Yes});
                           Keys::press(screen, Qt::Key_F7);
                           messages.whenShown({});
                           EXPECT_TRUE(messages.last().text.contains(u"مدیر فعال سیستم"_s));
                           EXPECT_EQ(text(sql), before);
                           // An administrator again, he does it.
                           run(u"update UserAccount set IsAdmin=1 where Code=%1"_s.arg(clerk));
                           messages.answer({TAnswer::Yes});
                           Keys::press(screen, Qt::Key_F7);
                           EXPECT_NE(text(sql), before);
                       });
    };
    TLockList_FRM locks;
    stays(locks, "select count(*) from CodeLock_TBL");
    TWorkstationList_FRM stations;
    stays(stations, "select count(*) from Workstation");
}
