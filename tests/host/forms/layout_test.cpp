#include "host/forms/FakeScreens.h"

#include "host/Component_ZLM/LayoutStore.h"

#include <QDataStream>
#include <QFile>

// What a damaged or forged layout file may do to a window: nothing.

namespace {

/// A remembered place as Qt writes it, with every rectangle made this large.
QByteArray forgedGeometry(const QWidget &window, int side)
{
    QByteArray bytes = window.saveGeometry();
    QByteArray corner;
    QDataStream(&corner, QIODevice::WriteOnly) << qint32(side) << qint32(side);
    const qsizetype frame = 8, normal = frame + 16, whole = bytes.size() - 16;
    for (const qsizetype rectangle : {frame, normal, whole})
        bytes.replace(rectangle + 8, 8, corner);
    return bytes;
}

/// Most memory that the process has asked for so far, in MiB.
int peak()
{
    QFile file("/proc/self/status");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith("VmPeak:"))
            return line.mid(7).trimmed().split(' ').value(0).toInt() / 1024;
    return 0;
}

} // namespace

class ForgedLayout : public Things {
protected:
    ForgedLayout() : list(&db.connection(), "List_QUR") { list.setKeyField("Code"); }
    ~ForgedLayout() override
    {
        for (const char *part : {"geometry", "panes", "Thing_GRD"})
            LayoutStore::setValue(QString("TThingList_FRM/%1").arg(part), {});
    }
    QSize shownSize()
    {
        QSize size;
        TThingList_FRM screen(fmBrowse, &list);
        Keys::runModal([&] { return screen.exec(); }, [&](QWidget *) { size = screen.size(); });
        return size;
    }
    TQuery list;
};

TEST_F(ForgedLayout, AWindowOfAMillionDotsEachWayComesUpAsUsual)
{
    const QSize usual = shownSize();
    QDialog any;
    for (const int side : {30'000, 1'000'000, 0x7ffffff0}) {
        LayoutStore::setValue("TThingList_FRM/geometry", forgedGeometry(any, side));
        EXPECT_EQ(shownSize(), usual) << side;
    }
    LayoutStore::setValue("TThingList_FRM/geometry", QByteArray("noise"));
    EXPECT_EQ(shownSize(), usual);
}

TEST_F(ForgedLayout, PanesThatNameFourThousandMillionSizesTakeNoMemory)
{
    shownSize();
    const int before = peak();
    // As the splitter itself wrote them: its mark, its version, and then a list's length.
    QByteArray panes;
    QDataStream(&panes, QIODevice::WriteOnly) << qint32(0xff) << qint32(1) << quint32(0xfffffff0);
    LayoutStore::setValue("TThingList_FRM/panes", panes);
    shownSize();
    LayoutStore::setValue("TThingList_FRM/panes", QStringList{"2147483647", "-5", "x"});
    shownSize();
    LayoutStore::setValue("TThingList_FRM/panes", QStringList{"2147483647"});
    shownSize();
    LayoutStore::setValue("TThingList_FRM/Thing_GRD", QStringList(10'000, "Title:2147483647:1"));
    shownSize();
    EXPECT_LT(peak() - before, 500);
}
