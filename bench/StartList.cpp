#include "host/Component_ZLM/Appearance.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/database/Connection.h"

#include <QApplication>
#include <QTableView>

#include <dlfcn.h>
#include <unistd.h>

#include <cstdio>

// The list of calculation methods through the module's export, as the application opens it, until its rows are painted.

namespace {

class UntilRowsArePainted : public QObject {
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            const auto *grid = qobject_cast<QTableView *>(watched->parent());
            if (grid && grid->viewport() == watched && grid->model() && grid->model()->rowCount() > 0)
                QMetaObject::invokeMethod(
                    this, [] { _exit(0); }, Qt::QueuedConnection);
        }
        return false;
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    SetUpAppearance(app);
    TConnection connection;
    connection.openFile(QString::fromLocal8Bit(argv[1]));
    DM.ADOConnection1 = &connection;
    UserInfo.IsAdmin = true;
    UntilRowsArePainted watcher;
    app.installEventFilter(&watcher);
    void *module = dlopen(KETEBIONPAP_BIN "/Ketebionpap_ZLM.so", RTLD_NOW);
    if (!module) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    using TOpen = void (*)();
    const auto open = reinterpret_cast<TOpen>(dlsym(module, "Open_CalculatingMethods"));
    if (!open)
        return 1;
    open();
    return 1; // the list was closed without ever being painted
}
