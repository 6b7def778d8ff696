#include <QApplication>
#include <QFont>
#include <QPaintEvent>
#include <QSqlDatabase>
#include <QSqlTableModel>
#include <QTableView>

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

// The table of calculation methods as the shortest program with Qt's own model and view shows it, until its rows are
// painted: what the Persian text of a list costs whoever paints it.
class PlainTable : public QTableView {
    void paintEvent(QPaintEvent *event) override
    {
        QTableView::paintEvent(event);
        QMetaObject::invokeMethod(
            this, [] { _exit(0); }, Qt::QueuedConnection);
    }
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setFont(QFont(u"Noto Sans Arabic"_s, 10));
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s);
    database.setDatabaseName(QString::fromLocal8Bit(argv[1]));
    if (!database.open())
        return 1;
    QSqlTableModel model;
    model.setTable(u"CalcMethod"_s);
    if (!model.select())
        return 1;
    PlainTable table;
    table.setModel(&model);
    table.resize(1000, 650);
    table.show();
    return QApplication::exec();
}
