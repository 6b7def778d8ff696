#include "services.h"

#include "host/Component_ZLM/Appearance.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Login_unt.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <memory>

namespace {

struct TServices {
    int argc = 1;
    char name[5] = "host";
    char *argv[2] = {name, nullptr};
    TConnection connection; // outlives the data modules, which go with the application
    QApplication application{argc, argv};
};
std::unique_ptr<TServices> services;

QString firstLine(const char *file)
{
    QFile text(QString::fromLocal8Bit(file));
    return text.open(QIODevice::ReadOnly) ? QString::fromUtf8(text.readLine()).remove(u'\n') : QString();
}

} // namespace

int services_start(const char *database, const char *user, const char *password_file)
{
    services = std::make_unique<TServices>();
    SetUpAppearance(services->application);
    IniOptions.load(); // the workstation's index, under which records are locked
    try {
        services->connection.openFile(QString::fromLocal8Bit(database)); // or openOdbc
        DM.ADOConnection1 = &services->connection;
        const QString name = QString::fromUtf8(user);
        const QString password = firstLine(password_file);
        if (!RegisterOwnWorkstation()) {
            std::fprintf(stderr, "cannot write %s\n", qUtf8Printable(IniOptions.FileName));
        } else if (NoUserYet() && CreateFirstAdministrator(name, name, password) != TLoginResult::Ok) {
            std::fprintf(stderr, "cannot make %s the first administrator: %s\n", user,
                         qUtf8Printable(PasswordComplaint(password, {name})));
        } else if (const TLogin login = LogIn(name, password); login.result != TLoginResult::Ok) {
            std::fprintf(stderr, "cannot log in as %s\n", user);
        } else {
            UserInfo = login.user;
            return 1;
        }
    } catch (const TDatabaseError &error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    services_stop();
    return 0;
}

void services_register_pickers(int (*tax_table)(void), int (*earning)(int, const char16_t *),
                               int (*deduction)(int, const char16_t *))
{
    RegisterEntityPicker(cspTax, [=](const QString &) { return tax_table(); });
    RegisterEntityPicker(cspFiscal, [=](const QString &) { return earning(4, u""); });
    RegisterEntityPicker(cspDeduction, [=](const QString &) { return deduction(4, u""); });
}

void services_stop(void)
{
    DM.ADOConnection1 = nullptr;
    services.reset();
}
