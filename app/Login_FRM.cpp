#include "app/Login_FRM.h"

#include "app/Ask.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Component_ZLM/PasswordHint_ZLM.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString lastUserKey = u"Login/LastUser"_s;
const int nameWidth = 50;
const int fullNameWidth = 100;
const int longestPassword = 128;

bool filled(QLineEdit *input, const QString &caption, QWidget *form)
{
    if (!input->text().trimmed().isEmpty())
        return true;
    MsgRequiredField(caption, input, form);
    input->setFocus();
    return false;
}

} // namespace

bool repeatedRightly(QLineEdit *password, QLineEdit *repeated)
{
    if (password->text() == repeated->text())
        return true;
    Tell(u"گذرواژه و تکرار آن یکسان نیستند."_s, miWarning);
    repeated->clear();
    password->setFocus();
    password->selectAll();
    return false;
}

TStart_FRM::TStart_FRM(const QString &title, const QString &text, const QString &okCaption)
    : m_grid(new QGridLayout)
{
    SetTitle(title);
    Text_LBL = new QLabel(text, this);
    Text_LBL->setObjectName(u"Text_LBL"_s);
    Text_LBL->setWordWrap(true);
    Text_LBL->setVisible(!text.isEmpty());
    Body()->addWidget(Text_LBL);
    Body()->addLayout(m_grid);
    Body()->addStretch(1);
    Ok_BTN = AddButton(u"Ok_BTN"_s, okCaption, u"F3"_s);
    connect(Ok_BTN, &QAbstractButton::clicked, this, &TStart_FRM::press);
    TSmartButton_ZLM *exit = AddButton(u"EXit_BTN"_s, u"خروج Esc"_s, u"Esc"_s);
    connect(exit, &QAbstractButton::clicked, this, &TStart_FRM::reject);
    resize(430, 200);
}

void TStart_FRM::OfferOtherDatabase()
{
    TSmartButton_ZLM *button = AddButton(u"Database_BTN"_s, u"پایگاه داده F8"_s, u"F8"_s);
    setTabOrder(findChild<QWidget *>(u"EXit_BTN"_s), button);
    connect(button, &QAbstractButton::clicked, this, [this] { done(OtherDatabase); });
}

QLineEdit *TStart_FRM::AddLine(const QString &caption, const QString &objectName, bool secret)
{
    auto *edit = new QLineEdit(this);
    edit->setObjectName(objectName);
    edit->setAccessibleName(QString(caption).remove(u'&').trimmed());
    edit->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    if (secret) {
        edit->setEchoMode(QLineEdit::Password);
        edit->setMaxLength(longestPassword);
        edit->setLayoutDirection(Qt::LeftToRight);
    }
    auto *label = new QLabel(caption, this);
    label->setBuddy(edit);
    const int row = m_grid->isEmpty() ? 0 : m_grid->rowCount();
    m_grid->addWidget(label, row, 0);
    m_grid->addWidget(edit, row, 1);
    if (secret)
        m_grid->addWidget(new TPasswordHint_ZLM(edit, this), row + 1, 1);
    // The inputs come before the buttons, the first one first.
    setTabOrder(m_last ? static_cast<QWidget *>(m_last) : this, edit);
    if (!m_last)
        edit->setFocus();
    m_last = edit;
    return edit;
}

void TStart_FRM::EnterKey()
{
    if (focusWidget() == m_last)
        press();
    else
        TBaseForm::EnterKey();
}

void TStart_FRM::press()
{
    if (!Ok_BTN->isEnabled())
        return;
    bool done = false;
    if (Guarded([&] { done = Accept(); }) && done)
        accept();
}

TLogin_FRM::TLogin_FRM(const QString &user)
    : TStart_FRM(u"ورود به برنامه"_s, {}, u"ورود F3"_s), User_EDT(AddLine(u"  نام &کاربر :"_s, "User_EDT")),
      Password_EDT(AddLine(u"  &گذرواژه :"_s, "Password_EDT", true)), m_timer(new QTimer(this))
{
    User_EDT->setMaxLength(nameWidth);
    User_EDT->setText(user.isEmpty() ? LayoutStore::value(lastUserKey).toString() : user);
    (User_EDT->text().isEmpty() ? User_EDT : Password_EDT)->setFocus();
    connect(m_timer, &QTimer::timeout, this, [this] { wait(m_secondsLeft - 1); });
}

bool TLogin_FRM::Accept()
{
    if (!filled(User_EDT, u"نام کاربر"_s, this))
        return false;
    const TLogin login = LogIn(User_EDT->text(), Password_EDT->text());
    if (login.result == TLoginResult::Ok) {
        m_user = login.user;
        LayoutStore::setValue(lastUserKey, login.user.Name);
        return true;
    }
    Tell(LoginText(login), miWarning);
    Password_EDT->clear();
    Password_EDT->setFocus();
    if (login.secondsToWait > 0)
        wait(login.secondsToWait);
    return false;
}

void TLogin_FRM::wait(int seconds)
{
    m_secondsLeft = seconds;
    Ok_BTN->setEnabled(seconds <= 0);
    Text_LBL->setVisible(seconds > 0);
    Text_LBL->setText(u"تا کوشش بعدی %1 ثانیه صبر کنید."_s.arg(seconds));
    if (seconds > 0)
        m_timer->start(1000);
    else
        m_timer->stop();
}

TFirstUser_FRM::TFirstUser_FRM()
    : TStart_FRM(
          u"نخستین مدیر سیستم"_s,
          u"این پایگاه داده هنوز کاربری ندارد. نخستین کاربر، مدیر سیستم است و همه دسترسی ها را دارد."_s,
          u"ایجاد F3"_s),
      User_EDT(AddLine(u"  نام &کاربر :"_s, "User_EDT")),
      FullName_EDT(AddLine(u"  نام و نام &خانوادگی :"_s, "FullName_EDT")),
      Password_EDT(AddLine(u"  &گذرواژه :"_s, "Password_EDT", true)),
      Repeat_EDT(AddLine(u"  &تکرار گذرواژه :"_s, "Repeat_EDT", true))
{
    User_EDT->setMaxLength(nameWidth);
    FullName_EDT->setMaxLength(fullNameWidth);
}

bool TFirstUser_FRM::Accept()
{
    if (!filled(User_EDT, u"نام کاربر"_s, this) || !filled(Password_EDT, u"گذرواژه"_s, this) ||
        !repeatedRightly(Password_EDT, Repeat_EDT))
        return false;
    TLogin login;
    login.result = CreateFirstAdministrator(User_EDT->text(), FullName_EDT->text(), Password_EDT->text());
    if (login.result == TLoginResult::Ok)
        login = LogIn(User_EDT->text(), Password_EDT->text());
    else if (login.result == TLoginResult::WeakPassword)
        login.why = PasswordComplaint(Password_EDT->text(), {User_EDT->text(), FullName_EDT->text()});
    if (login.result == TLoginResult::Ok) {
        m_user = login.user;
        LayoutStore::setValue(lastUserKey, login.user.Name);
        return true;
    }
    Tell(LoginText(login), miWarning);
    if (login.result == TLoginResult::WeakPassword)
        Password_EDT->setFocus();
    return false;
}

TChangePassword_FRM::TChangePassword_FRM()
    : TStart_FRM(u"تغییر گذرواژه"_s, {}, u"ذخیره F3"_s),
      Old_EDT(AddLine(u"  گذرواژه &کنونی :"_s, "Old_EDT", true)),
      New_EDT(AddLine(u"  گذرواژه &جدید :"_s, "New_EDT", true)),
      Repeat_EDT(AddLine(u"  &تکرار گذرواژه جدید :"_s, "Repeat_EDT", true))
{
}

bool TChangePassword_FRM::Accept()
{
    if (!filled(New_EDT, u"گذرواژه جدید"_s, this) || !repeatedRightly(New_EDT, Repeat_EDT))
        return false;
    const TLogin login = ChangePassword(UserInfo.Code, Old_EDT->text(), New_EDT->text());
    if (login.result != TLoginResult::Ok) {
        Tell(LoginText(login), miWarning);
        if (login.result == TLoginResult::WeakPassword)
            New_EDT->setFocus();
        return false;
    }
    Tell(u"گذرواژه تغییر کرد."_s);
    return true;
}

TWorkstation_FRM::TWorkstation_FRM(const QString &name)
    : TStart_FRM(
          u"شماره ایستگاه کاری"_s,
          u"هر رایانه در این پایگاه داده شماره ای برای خود دارد که قفل رکوردها با آن نگهداری می شود."_s,
          u"تایید F3"_s),
      Index_EDT(AddLine(u"  &شماره ایستگاه :"_s, "Index_EDT")),
      Name_EDT(AddLine(u"  &نام ایستگاه :"_s, "Name_EDT"))
{
    Index_EDT->setMaxLength(9);
    Name_EDT->setMaxLength(100);
    Name_EDT->setText(name);
    Guarded([this] { Index_EDT->setText(QString::number(FreeWorkstationIndexes(1).value(0, 1))); });
    Index_EDT->selectAll();
}

bool TWorkstation_FRM::Accept()
{
    if (!filled(Index_EDT, u"شماره ایستگاه"_s, this) || !filled(Name_EDT, u"نام ایستگاه"_s, this))
        return false;
    bool isNumber = false;
    const int index = PersianText::latinDigits(Index_EDT->text()).toInt(&isNumber);
    if (!isNumber || index < 1) {
        Tell(u"شماره ایستگاه باید عددی بزرگتر از صفر باشد."_s, miWarning);
    } else if (!RegisterWorkstation(index, Name_EDT->text().trimmed())) {
        Tell(u"شماره %1 از آن ایستگاه دیگری است. شماره دیگری وارد کنید."_s.arg(index), miWarning);
    } else {
        m_comIndex = index;
        return true;
    }
    Index_EDT->setFocus();
    Index_EDT->selectAll();
    return false;
}

TServerPassword_FRM::TServerPassword_FRM(const QString &server)
    : TStart_FRM(u"گذرواژه پایگاه داده"_s, u"گذرواژه برای اتصال به «%1» را وارد کنید."_s.arg(server),
                 u"اتصال F3"_s),
      Password_EDT(AddLine(u"  &گذرواژه :"_s, "Password_EDT", true))
{
}
