#include <QApplication>
#include <QPaintEvent>
#include <QWidget>

#include <unistd.h>

// An empty window of the list's size, until it is painted.
class EmptyWindow : public QWidget {
    void paintEvent(QPaintEvent *) override
    {
        QMetaObject::invokeMethod(
            this, [] { _exit(0); }, Qt::QueuedConnection);
    }
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    EmptyWindow window;
    window.resize(1000, 650);
    window.show();
    return QApplication::exec();
}
