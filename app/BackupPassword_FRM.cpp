#include "app/BackupPassword_FRM.h"

#include "app/Ask.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Password_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/database/SealedFile.h"

#include <QLabel>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

TNewSeal_FRM::TNewSeal_FRM()
    : TStart_FRM(
          u"گذرواژه پشتیبان"_s,
          u"پشتیبان با این گذرواژه رمز می شود و بدون آن به هیچ راهی باز نمی شود. اگر گذرواژه ندهید، هر کس پرونده را بخواند همه اطلاعات را می خواند."_s,
          u"ادامه F3"_s),
      Password_EDT(AddLine(u"  &گذرواژه :"_s, "Password_EDT", true)),
      Repeat_EDT(AddLine(u"  &تکرار گذرواژه :"_s, "Repeat_EDT", true))
{
}

bool TNewSeal_FRM::Accept()
{
    if (!repeatedRightly(Password_EDT, Repeat_EDT))
        return false;
    const QString complaint =
        Password().isEmpty() ? QString() : PasswordComplaint(Password(), {UserInfo.Name, UserInfo.FullName});
    if (complaint.isEmpty())
        return true;
    Tell(complaint, miWarning);
    Repeat_EDT->clear();
    Password_EDT->setFocus();
    Password_EDT->selectAll();
    return false;
}

TSeal_FRM::TSeal_FRM(std::function<void(const QString &)> open)
    : TStart_FRM(u"گذرواژه پشتیبان"_s,
                 u"این پشتیبان رمز شده است. گذرواژه ای را که با آن ساخته شد وارد کنید."_s, u"تایید F3"_s),
      Password_EDT(AddLine(u"  &گذرواژه :"_s, "Password_EDT", true)), m_open(std::move(open))
{
}

bool TSeal_FRM::Accept()
{
    try {
        m_open(Password_EDT->text());
        return true;
    } catch (const TSealError &error) {
        TellFault();
        if (!error.asksForPassword())
            reject();
    } catch (...) { // no other password will help
        TellFault();
        reject();
    }
    Password_EDT->clear();
    Password_EDT->setFocus();
    return false;
}

bool TakeSealed(const std::function<void(const QString &)> &open)
{
    try {
        open({});
        return true;
    } catch (const TSealError &error) {
        if (!error.asksForPassword())
            throw;
    }
    return TSeal_FRM(open).exec() == QDialog::Accepted;
}
