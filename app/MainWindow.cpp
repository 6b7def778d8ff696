#include "app/MainWindow.h"

#include "app/Administration_FRM.h"
#include "app/Ask.h"
#include "app/BackupPassword_FRM.h"
#include "app/DatabaseSettings_FRM.h"
#include "app/EventLogCheck.h"
#include "app/Login_FRM.h"
#include "app/PickTarget_FRM.h"
#include "app/Users_FRM.h"
#include "host/Component_ZLM/FileDialogs.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/UserRights_unt.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"
#include "host/database/Backup.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const int buttonColumns = 2;

QString backupFilter()
{
    return u"پشتیبان پایگاه داده (*.db)"_s;
}

/// For file names: "14030901-0805".
QString stamp()
{
    return QString(NowDate() + u'-' + NowTime()).remove(u'/').remove(u':');
}

/// The name, or the first one with a number behind it that no file has.
QString freeName(const QString &name)
{
    QString free = name;
    for (int number = 2; QFile::exists(free); ++number)
        free = u"%1-%2"_s.arg(name).arg(number);
    return free;
}

/// What the user knows a backup by.
QString contentsText(const Backup::TContents &contents)
{
    static const std::pair<const char *, QString> tables[] = {{"Staff", u"پرسنل"_s},
                                                              {"CalcMethod", u"روش محاسبه"_s},
                                                              {"TaxMain", u"جدول مالیات"_s},
                                                              {"Calender", u"روز تقویم"_s},
                                                              {"Fiscal", u"مزایا"_s},
                                                              {"Deduction", u"کسور"_s},
                                                              {"UserAccount", u"کاربر برنامه"_s}};
    QStringList counts;
    for (const auto &[table, caption] : tables)
        counts += u"%1 : %2"_s.arg(caption).arg(contents.rows.value(QLatin1String(table)));
    const QString written = TPersianDate::fromGregorian(contents.fileTime.date()).toText() + u' ' +
                            contents.fileTime.time().toString(u"HH:mm"_s);
    return u"تاریخ پرونده پشتیبان : \u2066%1\u2069\nآخرین رویداد آن : \u2066%2\u2069\n%3"_s.arg(
        written, contents.lastEvent.isEmpty() ? u"-"_s : contents.lastEvent, counts.join(u'\n'));
}

struct TBusy {
    TBusy() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~TBusy() { QApplication::restoreOverrideCursor(); }
};

} // namespace

TMain_FRM::TMain_FRM(TSession &session) : m_session(session)
{
    setObjectName(u"TMain_FRM"_s);
    setWindowTitle(u"اطلاعات پایه حقوق و دستمزد"_s);
    setLayoutDirection(Qt::RightToLeft);
    setAttribute(Qt::WA_KeyboardFocusChange); // the focus is seen before the first Tab, too
    resize(760, 520);
    buildStatus();
    Rebuild();
    LayoutStore::restoreWindow(this);
}

TMain_FRM::TDoors TMain_FRM::doorsNow()
{
    TDoors doors;
    doors.administration = IsAdministrator(UserInfo);
    for (const TRight &right : UserInfo.Code == 0 ? QList<TRight>() : RightsOfUser(UserInfo.Code))
        if (right.right == cpOpen)
            doors.parts << int(right.part);
    const TStanding standing = StandingOf(UserInfo, TSoftwarePart(0), cpOpen);
    doors.active = standing == TStanding::Holds || standing == TStanding::NoRight;
    return doors;
}

// A user may be demoted, shut out or given more while the window stands.
void TMain_FRM::follow()
{
    try {
        if (doorsNow() == m_doors)
            return;
    } catch (const TDatabaseError &) {
        return; // the next door tells about the line
    }
    // Not now: a menu that is opening, or whose item runs, is among those that are made anew.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (QWidget *popup = QApplication::activePopupWidget())
                popup->close();
            Rebuild();
        },
        Qt::QueuedConnection);
}

void TMain_FRM::Rebuild()
{
    for (QMenu *menu : menuBar()->findChildren<QMenu *>(Qt::FindDirectChildrenOnly)) {
        menu->setObjectName({});
        menu->deleteLater();
    }
    menuBar()->clear();
    Guarded([this] { m_doors = doorsNow(); });
    buildMenus();
    buildButtons();
    for (const QMenu *menu : menuBar()->findChildren<QMenu *>(Qt::FindDirectChildrenOnly))
        connect(menu, &QMenu::aboutToShow, this, &TMain_FRM::follow);
    showStatus();
}

QAction *TMain_FRM::addDoor(QMenu *menu, const QString &caption, const char *name,
                            std::function<void()> action)
{
    const QString deed = QString(caption).remove(u'&').remove(u" ..."_s);
    return addItem(menu, caption, name, {}, [this, deed, action = std::move(action)] {
        if (HaveAdministration(UserInfo, deed))
            action();
        else
            follow();
    });
}

QAction *TMain_FRM::addItem(QMenu *menu, const QString &caption, const char *name, const QString &key,
                            std::function<void()> action)
{
    QAction *item = menu->addAction(caption);
    item->setObjectName(QLatin1String(name));
    if (!key.isEmpty())
        item->setShortcut(QKeySequence(key));
    connect(item, &QAction::triggered, this, [action = std::move(action)] { Guarded(action); });
    return item;
}

void TMain_FRM::addEntries(QMenu *menu, bool select)
{
    for (const TEntryPoint &entry : EntryPoints::all()) {
        if (entry.isSelect() == select && EntryPoints::mayOpen(entry)) {
            addItem(menu, entry.caption, entry.name, QLatin1String(entry.key),
                    [this, &entry] { OpenEntry(entry); });
        }
    }
    menu->menuAction()->setVisible(!menu->isEmpty());
}

void TMain_FRM::buildMenus()
{
    const bool onServer = m_session.choice().onServer();
    QMenu *file = menuBar()->addMenu(u"&پرونده"_s);
    file->setObjectName(u"File_MNU"_s);
    addItem(file, u"تنظیمات &پایگاه داده ..."_s, "DatabaseSettings_ACT", {}, [this] { databaseSettings(); });
    if (!onServer) {
        addItem(file, u"پ&شتیبان گیری ..."_s, "Backup_ACT", {}, [this] { backUp(); });
        addDoor(file, u"&بازیابی پشتیبان ..."_s, "Restore_ACT", [this] {
            restore();
        })->setVisible(m_doors.administration);
    }
    file->addSeparator();
    // The sample company's administrator has no account.
    if (UserInfo.Code != 0)
        addItem(file, u"تغییر &گذرواژه ..."_s, "ChangePassword_ACT", {},
                [] { TChangePassword_FRM().exec(); });
    addItem(file, u"&ورود کاربر دیگر"_s, "LogOut_ACT", {}, [this] { Q_EMIT logOutWanted(); });
    addItem(file, u"&خروج"_s, "Exit_ACT", u"Ctrl+Q"_s, [this] { close(); });

    QMenu *entries = menuBar()->addMenu(u"&اطلاعات پایه"_s);
    entries->setObjectName(u"Open_MNU"_s);
    addEntries(entries, false);
    QMenu *selections = menuBar()->addMenu(u"ا&نتخاب"_s);
    selections->setObjectName(u"Select_MNU"_s);
    addEntries(selections, true);
    // What other modules of the suite do with the payroll module's pick.
    if (EntryPoints::mayOpen(*EntryPoints::find(u"Select_FiscalList"_s))) {
        selections->addSeparator();
        addItem(selections, u"افزودن مزایا و کسورات به &حکم کارگزینی ..."_s, "PickIntoOrder_ACT", {},
                [this] { TPickTarget_FRM(m_session, TPickTarget_FRM::Orders).exec(); });
        addItem(selections, u"افزودن مزایا و کسورات به &کارکرد ..."_s, "PickIntoOutput_ACT", {},
                [this] { TPickTarget_FRM(m_session, TPickTarget_FRM::Outputs).exec(); });
    }

    if (m_doors.administration) {
        QMenu *administration = menuBar()->addMenu(u"&مدیریت"_s);
        administration->setObjectName(u"Administration_MNU"_s);
        addDoor(administration, u"&کاربران و دسترسی ها ..."_s, "Users_ACT", [] { TUserList_FRM().exec(); });
        addDoor(administration, u"&رویدادها ..."_s, "Events_ACT", [] { TEventLog_FRM().exec(); });
        addDoor(administration, u"&قفل رکوردها ..."_s, "Locks_ACT", [] { TLockList_FRM().exec(); });
        addDoor(administration, u"&ایستگاه های کاری ..."_s, "Workstations_ACT",
                [] { TWorkstationList_FRM().exec(); });
    }
    QMenu *help = menuBar()->addMenu(u"&راهنما"_s);
    help->setObjectName(u"Help_MNU"_s);
    addItem(help, u"&درباره برنامه"_s, "About_ACT", {}, [this] { about(); });
}

void TMain_FRM::buildButtons()
{
    m_buttons.clear();
    auto *center = new QWidget;
    auto *grid = new QGridLayout(center);
    grid->setSpacing(12);
    grid->setContentsMargins(24, 24, 24, 24);
    for (const TEntryPoint &entry : EntryPoints::all()) {
        if (entry.isSelect() || !EntryPoints::mayOpen(entry))
            continue;
        // The key stands below in a line of its own: mixed into a Persian line its parts would change places.
        auto *button = new QPushButton(entry.caption + u'\n' + QLatin1String(entry.key), center);
        button->setObjectName(QLatin1String(entry.name) + "_BTN"_L1);
        button->setAccessibleName(entry.caption);
        button->setMinimumSize(220, 64);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        button->setAutoDefault(true);
        button->installEventFilter(this);
        connect(button, &QPushButton::clicked, this, [this, &entry] { OpenEntry(entry); });
        grid->addWidget(button, int(m_buttons.size()) / buttonColumns, int(m_buttons.size()) % buttonColumns);
        m_buttons << button;
    }
    if (m_buttons.isEmpty())
        grid->addWidget(new QLabel(u"شما به هیچ بخشی دسترسی ندارید. از مدیر سیستم بخواهید."_s), 0, 0,
                        Qt::AlignCenter);
    setCentralWidget(center);
    // A last one alone in its row has the whole row.
    if (m_buttons.size() % buttonColumns == 1) {
        const int row = int(m_buttons.size()) / buttonColumns;
        grid->addWidget(m_buttons.last(), row, 0, 1, buttonColumns);
    }
    if (!m_buttons.isEmpty())
        m_buttons.first()->setFocus(Qt::TabFocusReason);
}

void TMain_FRM::buildStatus()
{
    const auto add = [this](const char *name) {
        auto *label = new QLabel;
        label->setObjectName(QLatin1String(name));
        label->setContentsMargins(8, 0, 8, 0);
        statusBar()->addPermanentWidget(label);
        return label;
    };
    m_user = add("User_LBL");
    m_workstation = add("Workstation_LBL");
    m_database = add("Database_LBL");
    m_line = add("Line_LBL");
    m_date = add("Date_LBL");
    // The window may stay open over midnight.
    auto *minute = new QTimer(this);
    connect(minute, &QTimer::timeout, this, &TMain_FRM::showStatus);
    minute->start(60 * 1000);
}

void TMain_FRM::showStatus()
{
    m_user->setText(u"کاربر: %1"_s.arg(UserInfo.FullName.isEmpty() ? UserInfo.Name : UserInfo.FullName));
    m_workstation->setText(u"ایستگاه: %1"_s.arg(IniOptions.Com_Index));
    const QString database = m_session.connection().displayName();
    m_database->setText(u"پایگاه داده: \u2066%1\u2069"_s.arg(database.section(u'/', -1)));
    m_database->setToolTip(database);
    const TLineState line = m_session.connection().line();
    m_line->setVisible(line.toServer);
    m_line->setText(u"سرور: \u2066%1\u2069 (%2)"_s.arg(line.server, PrivacyText(line.privacy)));
    m_date->setText(u"\u2066%1\u2069"_s.arg(NowDate()));
}

void TMain_FRM::OpenEntry(const TEntryPoint &entry)
{
    statusBar()->clearMessage();
    if (!m_session.ensureConnected())
        return;
    const int result = m_session.callEntry(entry, entry.usualArguments);
    showStatus(); // the server may be another one by now
    follow();
    if (entry.isSelect())
        statusBar()->showMessage(result == 0 ? u"چیزی انتخاب نشد."_s : u"کد انتخاب شده: %1"_s.arg(result));
}

bool TMain_FRM::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QPushButton *>(watched);
    if (!button || event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Up:
        moveFocus(button, -1, 0);
        return true;
    case Qt::Key_Down:
        moveFocus(button, 1, 0);
        return true;
    case Qt::Key_Left: // right to left: the next one stands on the left
        moveFocus(button, 0, 1);
        return true;
    case Qt::Key_Right:
        moveFocus(button, 0, -1);
        return true;
    default:
        return QMainWindow::eventFilter(watched, event);
    }
}

void TMain_FRM::moveFocus(QPushButton *from, int rows, int columns)
{
    const qsizetype place = m_buttons.indexOf(from) + qsizetype(rows) * buttonColumns + columns;
    if (place >= 0 && place < m_buttons.size())
        m_buttons.at(place)->setFocus(Qt::TabFocusReason);
}

void TMain_FRM::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F10 || event->modifiers() != Qt::NoModifier ||
        menuBar()->actions().isEmpty()) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    menuBar()->setFocus(Qt::MenuBarFocusReason);
    menuBar()->setActiveAction(menuBar()->actions().first());
}

void TMain_FRM::closeEvent(QCloseEvent *event)
{
    LayoutStore::saveWindow(this);
    QMainWindow::closeEvent(event);
    Q_EMIT closed();
}

void TMain_FRM::databaseSettings()
{
    TDatabaseSettings_FRM settings(TDatabaseChoice::stored());
    if (settings.exec() == QDialog::Accepted)
        Tell(u"تنظیمات ذخیره شد و از شروع بعدی برنامه به کار می رود."_s);
}

void TMain_FRM::backUp()
{
    const QString name = u"ketebionpap-%1.db"_s.arg(stamp());
    QString target = FileDialogs::AskToSave(
        this,
        {.caption = u"پشتیبان گیری"_s, .filter = backupFilter(), .name = name, .confirmReplace = false});
    if (target.isEmpty())
        return;
    if (QFileInfo(target).suffix().isEmpty())
        target += u".db"_s;
    if (QFile::exists(target) &&
        !Ask(u"پرونده ای با این نام هست:\n\u2066%1\u2069\nجایگزین شود؟"_s.arg(target), TAnswer::No))
        return;
    TNewSeal_FRM seal;
    if (seal.exec() != QDialog::Accepted)
        return;
    {
        const TBusy busy;
        Backup::save(m_session.choice().file, target, seal.Password());
    }
    SetUserEvent(TSoftwarePart(0), cpPrint, u"پشتیبان گیری در %1"_s.arg(target), true, true);
    const TEventLogVerdict log = CheckEventLogWithProgress(this);
    Tell(u"پشتیبان ساخته و بررسی شد:\n%1"_s.arg(target) + u"\n\n"_s +
             (log.finished ? EventCheckText(log.check) : u"بررسی رویدادها به پایان نرسید."_s),
         log.finished && log.check.isWhole() ? miInformation : miWarning);
}

void TMain_FRM::restore()
{
    const QString source =
        FileDialogs::AskToOpen(this, {.caption = u"بازیابی پشتیبان"_s, .filter = backupFilter()});
    if (source.isEmpty())
        return;
    if (!ListCodeLocks().isEmpty()) {
        Tell(TDatabaseError(TFault::BeingEdited, {}).userText(), miWarning);
        return;
    }
    const QString file = m_session.choice().file;
    std::unique_ptr<Backup::TRestore> restoring;
    const auto take = [&](const QString &password) {
        const TBusy busy;
        restoring = std::make_unique<Backup::TRestore>(file, source, password);
    };
    if (!TakeSealed(take))
        return;
    if (!Ask(
            contentsText(restoring->contents()) +
                u"\n\nهمه اطلاعات کنونی با اطلاعات پشتیبان جایگزین می شود. پیش از آن از اطلاعات کنونی پشتیبان گرفته می شود. ادامه می دهید؟"_s,
            TAnswer::No) ||
        !HaveAdministration(UserInfo, u"بازیابی پشتیبان"_s)) // the question may have waited long
        return;
    const QString before = freeName(u"%1.before-restore-%2"_s.arg(file, stamp()));
    {
        const TBusy busy;
        restoring->run(before);
        restoring.reset();
        m_session.reconnect();
    }
    SetUserEvent(TSoftwarePart(0), cpEdit, u"بازیابی پشتیبان از %1"_s.arg(source), true, true);
    // Who restored it knows that the lines behind the backup are gone.
    KeepSeenHead({});
    Tell(
        u"اطلاعات پشتیبان بازیابی شد. اطلاعات پیشین در این پرونده است:\n%1\nدوباره وارد شوید."_s.arg(before));
    Q_EMIT logOutWanted();
}

void TMain_FRM::about()
{
    const TLineState line = m_session.connection().line();
    Tell(u"اطلاعات پایه حقوق و دستمزد\nنسخه %1\nپایگاه داده: \u2066%2\u2069"_s.arg(
             QLatin1String(KETEBIONPAP_VERSION), m_session.connection().displayName()) +
         (line.toServer ? u"\nسرور: \u2066%1\u2069 (%2)"_s.arg(line.server, PrivacyText(line.privacy))
                        : QString()));
}
