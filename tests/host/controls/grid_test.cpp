#include "host/controls/Form.h"
#include "support/PaintedText.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/Component_ZLM/LayoutStore.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/database/Query.h"

#include <QDialog>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <tuple>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const int rowCount = 300;

QList<TGridColumn> columns()
{
    return {{u"Code"_s, u"کد"_s, 43, true, TGridColumn::Code},
            {u"Title"_s, u"عنوان"_s, 152},
            {u"Cost"_s, u"مبلغ"_s, 120, true, TGridColumn::Money},
            {u"Hidden"_s, u"پنهان"_s, 80, false},
            {u"Row"_s, u"ردیف"_s, 50, true, TGridColumn::RowNumber}};
}

struct Grid : testing::Test {
    TestDatabase database;
    ScriptedMessages messages;
    TQuery query{DM.ADOConnection1, u"List_QUR"_s};
    QDialog form;
    TSmartGrid_ZLM *grid = nullptr;

    void SetUp() override
    {
        LayoutStore::setValue(u"QDialog/Sample_GRD"_s, {});
        database.run(u"create table Sample(Code int primary key, Title nvarchar(50), Cost float, "
                     "Hidden nvarchar(10))"_s);
        query.setStatement(TStatement("select Code, Title, Cost, Hidden from Sample"));
        query.setKeyField(u"Code"_s);
    }
    void fill(int rows = rowCount)
    {
        for (int i = 1; i <= rows; ++i) {
            // Costs run against the codes: 300 has the least.
            database.run(u"insert into Sample values (%1, 'روش شماره %1', %2, 'x')"_s.arg(i).arg(
                (rowCount - i) * 1000.5, 0, 'f', 1));
        }
    }
    void show(bool openQuery = true)
    {
        grid = new TSmartGrid_ZLM(u"Sample_GRD"_s, &form);
        grid->SetColumns(&query, columns());
        auto *layout = new QVBoxLayout(&form);
        layout->addWidget(grid);
        if (openQuery)
            query.open();
        form.resize(640, 300);
        form.show();
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        grid->setFocus();
    }
    QString cell(int row, int column) const { return grid->Model()->index(row, column).data().toString(); }
    void clickHeader(int column)
    {
        QHeaderView *header = grid->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                                 header->height() / 2));
    }
};

} // namespace

TEST_F(Grid, AnEmptyListSaysSo)
{
    const QString empty = u"<داده ای برای نمایش وجود ندارد>"_s;
    show();
    EXPECT_EQ(paintedText(grid->viewport()), empty);
    Keys::picture(&form, u"grid_empty"_s);
    fill(1);
    query.close();
    EXPECT_EQ(paintedText(grid->viewport()), empty) << "a list that is not open has no rows either";
    query.open();
    EXPECT_FALSE(paintedText(grid->viewport()).contains(empty));
}

TEST_F(Grid, CellsAreShownByTheirFormat)
{
    fill();
    show();
    EXPECT_EQ(grid->Model()->rowCount(), rowCount);
    EXPECT_EQ(cell(0, 0), u"1"_s);
    EXPECT_EQ(cell(0, 1), u"روش شماره 1"_s);
    EXPECT_EQ(cell(0, 2), u"299,149.5"_s);
    EXPECT_EQ(cell(299, 4), u"300"_s);
    Keys::picture(&form, u"grid_rows"_s);
}

TEST_F(Grid, HeadersAndCellsStandAtTheRightAndCaptionsFit)
{
    show();
    for (int column = 0; column < 5; ++column) {
        const auto alignment =
            Qt::Alignment(grid->Model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
        EXPECT_TRUE(alignment.testFlag(Qt::AlignRight) && alignment.testFlag(Qt::AlignAbsolute));
        if (!grid->isColumnHidden(column)) {
            EXPECT_GT(grid->columnWidth(column),
                      grid->fontMetrics().horizontalAdvance(columns()[column].caption));
        }
    }
    EXPECT_EQ(grid->layoutDirection(), Qt::RightToLeft);
    EXPECT_TRUE(grid->isColumnHidden(3));
}

TEST_F(Grid, TheCurrentRowFollowsTheQueryAndTheQueryTheGrid)
{
    fill();
    show();
    EXPECT_EQ(grid->currentIndex().row(), query.position());
    query.last();
    EXPECT_EQ(grid->currentIndex().row(), rowCount - 1);
    EXPECT_TRUE(grid->viewport()->rect().intersects(grid->visualRect(grid->currentIndex())));
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(query.position(), rowCount - 2);
    EXPECT_EQ(query.asInteger(u"Code"_s), rowCount - 1);
    query.close();
    EXPECT_EQ(grid->Model()->rowCount(), 0);
    query.open();
    query.moveTo(10);
    EXPECT_EQ(grid->currentIndex().row(), 10);
}

TEST_F(Grid, HomeEndAndThePageKeysMoveByRows)
{
    fill();
    show();
    Keys::press(&form, Qt::Key_End);
    EXPECT_EQ(query.position(), rowCount - 1);
    Keys::press(&form, Qt::Key_Home);
    EXPECT_EQ(query.position(), 0);
    Keys::press(&form, Qt::Key_PageDown);
    const int page = query.position();
    EXPECT_GT(page, 3);
    Keys::press(&form, Qt::Key_PageUp);
    EXPECT_EQ(query.position(), 0);
    Keys::press(&form, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(query.position(), rowCount - 1);
    Keys::press(&form, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(query.position(), 0);
}

TEST_F(Grid, AClickOnAHeaderSortsAndKeepsTheCurrentRow)
{
    fill();
    show();
    query.moveTo(9); // code 10
    clickHeader(2);
    EXPECT_EQ(cell(0, 0), u"300"_s) << "least cost first";
    EXPECT_EQ(query.asInteger(u"Code"_s), 10);
    EXPECT_EQ(grid->currentIndex().row(), query.position());
    EXPECT_EQ(query.position(), rowCount - 10);
    clickHeader(2);
    EXPECT_EQ(cell(0, 0), u"1"_s);
    EXPECT_EQ(query.asInteger(u"Code"_s), 10);
    clickHeader(2);
    EXPECT_FALSE(grid->horizontalHeader()->isSortIndicatorShown())
        << "a third click returns to the order of the keys";
    EXPECT_EQ(cell(0, 0), u"1"_s);
}

TEST_F(Grid, TheRowNumberIsNothingToSortBy)
{
    fill(20);
    show();
    clickHeader(4);
    EXPECT_FALSE(grid->horizontalHeader()->isSortIndicatorShown());
}

TEST_F(Grid, OnlyRowsThatArePaintedAreRead)
{
    fill();
    show();
    QApplication::processEvents();
    database.failStatement(1); // whatever is read now fails
    grid->viewport()->update();
    QApplication::processEvents();
    EXPECT_TRUE(messages.take().isEmpty()) << "the rows on the screen are there";
}

TEST_F(Grid, ARowThatCannotBeReadIsToldOnceAndTheProgramGoesOn)
{
    fill();
    show(false);
    query.open();
    database.failStatement(1, TFault::ConnectionLost);
    EXPECT_EQ(cell(150, 1), QString()) << "a page that nobody has asked for yet";
    database.failStatement(1, TFault::ConnectionLost);
    EXPECT_EQ(cell(151, 1), QString());
    QApplication::processEvents();
    database.failStatement(0);
    int told = 0;
    for (const QString &message : messages.take())
        told += message.startsWith("MsgDatabaseError"_L1) ? 1 : 0;
    EXPECT_EQ(told, 1);
    EXPECT_EQ(cell(150, 0), u"151"_s) << "the next try reads it";
}

TEST_F(Grid, OneRowIsSelectedUnlessSeveralMayBe)
{
    fill();
    show();
    Keys::press(&form, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(grid->SelectedRows().isEmpty());
    grid->SetMultiSelect(true);
    query.moveTo(5);
    EXPECT_TRUE(grid->SelectedRows().isEmpty()) << "the current row alone is no selection";
    Keys::press(&form, Qt::Key_Down, Qt::ShiftModifier);
    Keys::press(&form, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(grid->SelectedRows(), (QList<int>{5, 6, 7}));
    EXPECT_EQ(query.position(), 7);
    Keys::press(&form, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(grid->SelectedRows(), (QList<int>{5, 6}));
    Keys::press(&form, Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(grid->SelectedRows(), (QList<int>{0, 1, 2, 3, 4, 5}));
    Keys::press(&form, Qt::Key_Down);
    EXPECT_TRUE(grid->SelectedRows().isEmpty());
    Keys::press(&form, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid->SelectedRows().size(), rowCount);
}

TEST_F(Grid, SpaceTicksRowsAndTicksStayWithTheirRows)
{
    fill();
    show();
    grid->SetRowChecks(true);
    int told = 0;
    QObject::connect(grid->Model(), &TQueryModel::checksChanged, grid, [&] { ++told; });
    Keys::press(&form, Qt::Key_Space);
    Keys::press(&form, Qt::Key_Down);
    Keys::press(&form, Qt::Key_Down);
    Keys::press(&form, Qt::Key_Space);
    EXPECT_EQ(grid->Model()->checkedKeys(), (QList<qlonglong>{1, 3}));
    EXPECT_EQ(told, 2);
    Keys::picture(&form, u"grid_checks"_s);
    clickHeader(2); // sorted by cost, code 3 comes before code 1
    EXPECT_EQ(grid->Model()->checkedKeys(), (QList<qlonglong>{3, 1}));
    query.moveTo(query.rowOfKey(3));
    Keys::press(&form, Qt::Key_Space);
    EXPECT_EQ(grid->Model()->checkedKeys(), (QList<qlonglong>{1}));
    database.run(u"delete from Sample where Code = 1"_s);
    query.close();
    query.open();
    EXPECT_TRUE(grid->Model()->checkedKeys().isEmpty()) << "a row that is gone is not ticked";
    Keys::press(&form, Qt::Key_Space);
    grid->Model()->clearChecks();
    EXPECT_TRUE(grid->Model()->checkedKeys().isEmpty());
}

TEST_F(Grid, WithoutTicksSpaceDoesNothing)
{
    fill(3);
    show();
    Keys::press(&form, Qt::Key_Space);
    EXPECT_TRUE(grid->Model()->checkedKeys().isEmpty());
}

TEST_F(Grid, EnterFunctionKeysAndLettersAreTheScreens)
{
    struct Screen : QDialog {
        QList<int> keys;
        void keyPressEvent(QKeyEvent *event) override { keys << event->key(); }
    } screen;
    fill(5);
    auto *owned = new TSmartGrid_ZLM(u"Sample_GRD"_s, &screen);
    owned->SetColumns(&query, columns());
    query.open();
    screen.show();
    owned->setFocus();
    const QList<Qt::Key> keys{Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Escape, Qt::Key_F2,       Qt::Key_F4,
                              Qt::Key_F5,     Qt::Key_Delete, Qt::Key_Plus,   Qt::Key_Asterisk, Qt::Key_A};
    for (const Qt::Key key : keys)
        Keys::press(&screen, key);
    EXPECT_EQ(screen.keys, QList<int>(keys.begin(), keys.end()));
    EXPECT_EQ(query.position(), 0);
}

TEST_F(Grid, AScreenMayTakeAKeyBeforeTheGrid)
{
    fill(5);
    show();
    QObject::connect(grid, &TSmartGrid_ZLM::keyPressed, grid, [](QKeyEvent *event) {
        if (event->key() == Qt::Key_Down)
            event->accept();
    });
    Keys::press(&form, Qt::Key_Down);
    EXPECT_EQ(query.position(), 0);
    Keys::press(&form, Qt::Key_End);
    EXPECT_EQ(query.position(), 4);
}

TEST_F(Grid, TabLeavesTheGrid)
{
    fill(5);
    show();
    auto *button = new QPushButton(&form);
    form.layout()->addWidget(button);
    QApplication::processEvents();
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_TRUE(button->hasFocus());
}

TEST_F(Grid, ADoubleClickOnARowIsToldAndOneBesideTheRowsIsNot)
{
    fill(3);
    show();
    int told = 0;
    QObject::connect(grid, &TSmartGrid_ZLM::rowActivated, grid, [&] { ++told; });
    const QPoint second = grid->visualRect(grid->Model()->index(1, 1)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(query.position(), 1);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, QPoint(10, grid->viewport()->height() - 5));
    EXPECT_EQ(told, 1);
}

TEST_F(Grid, CtrlCCopiesTheCurrentRowAsItIsShown)
{
    fill(3);
    show();
    query.moveTo(1);
    Keys::press(&form, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"2\tروش شماره 2\t298,149\t2"_s);
}

TEST_F(Grid, TheColumnMenuHidesAndShowsColumnsButNeverTheLastOne)
{
    show();
    QMenu menu;
    grid->FillColumnMenu(&menu);
    ASSERT_EQ(menu.actions().size(), 5);
    menu.actions()[3]->trigger();
    EXPECT_FALSE(grid->isColumnHidden(3));
    menu.actions()[1]->trigger();
    EXPECT_TRUE(grid->isColumnHidden(1));
    for (const int column : {2, 3, 4})
        menu.actions()[column]->trigger();
    QMenu left;
    grid->FillColumnMenu(&left);
    EXPECT_FALSE(left.actions()[0]->isEnabled());
    EXPECT_TRUE(left.actions()[1]->isEnabled());
}

TEST_F(Grid, AColumnThatIsNotOfferedIsHiddenAndNotInTheMenu)
{
    show();
    grid->SetColumnOffered(u"cost"_s, false);
    EXPECT_TRUE(grid->isColumnHidden(2));
    QMenu menu;
    grid->FillColumnMenu(&menu);
    EXPECT_EQ(menu.actions().size(), 4);
    grid->SetColumnOffered(u"Cost"_s, true);
    EXPECT_FALSE(grid->isColumnHidden(2));
}

TEST_F(Grid, TheColumnsStayAsTheUserArrangedThem)
{
    show();
    grid->setColumnWidth(1, 211);
    grid->horizontalHeader()->moveSection(0, 2);
    QMenu menu;
    grid->FillColumnMenu(&menu);
    menu.actions()[3]->trigger();
    form.hide();

    QDialog again;
    TSmartGrid_ZLM other(u"Sample_GRD"_s, &again);
    other.SetColumns(&query, columns());
    again.show();
    EXPECT_EQ(other.columnWidth(1), 211);
    EXPECT_EQ(other.horizontalHeader()->visualIndex(0), 2);
    EXPECT_FALSE(other.isColumnHidden(3));

    QDialog third;
    TSmartGrid_ZLM stranger(u"Other_GRD"_s, &third);
    stranger.SetColumns(&query, columns());
    third.show();
    EXPECT_EQ(stranger.horizontalHeader()->visualIndex(0), 0) << "another grid has its own layout";
}

TEST_F(Grid, ADamagedLayoutLeavesTheScreensOwn)
{
    LayoutStore::setValue(u"QDialog/Sample_GRD"_s,
                          QStringList{u"Nothing:5:1"_s, u"Title:-7:0"_s, u"junk"_s, u"Code:90:0"_s});
    show();
    EXPECT_EQ(grid->columnWidth(1), 152);
    EXPECT_TRUE(grid->isColumnHidden(0));
    EXPECT_FALSE(grid->isColumnHidden(1));
}

TEST_F(Grid, AWindowsPlaceIsRemembered)
{
    QDialog window;
    window.setGeometry(50, 60, 333, 222);
    LayoutStore::saveWindow(&window);
    QDialog again;
    EXPECT_TRUE(LayoutStore::restoreWindow(&again));
    EXPECT_EQ(again.size(), QSize(333, 222));
    QWidget other;
    EXPECT_FALSE(LayoutStore::restoreWindow(&other));
}

TEST_F(Grid, AnArrangementThatStaysAsItWasIsNotWrittenAgain)
{
    QTemporaryDir folder;
    const QString before = std::exchange(IniOptions.FileName, folder.filePath("ketebionpap.ini"));
    const auto written = [&] {
        struct stat file = {};
        EXPECT_EQ(::stat(qUtf8Printable(folder.filePath("layout.ini")), &file), 0);
        return std::tuple(file.st_ino, file.st_mtim.tv_sec, file.st_mtim.tv_nsec);
    };
    QDialog window;
    window.setGeometry(50, 60, 333, 222);
    LayoutStore::saveWindow(&window);
    const auto first = written();
    LayoutStore::saveWindow(&window);
    EXPECT_EQ(written(), first);
    window.resize(334, 222);
    LayoutStore::saveWindow(&window);
    EXPECT_NE(written(), first);
    IniOptions.FileName = before;
}

TEST_F(Grid, TheGridOutlivesItsQuery)
{
    auto second = std::make_unique<TQuery>(DM.ADOConnection1, u"Temp_QUR"_s);
    second->setStatement(TStatement("select Code, Title, Cost, Hidden from Sample"));
    fill(5);
    TSmartGrid_ZLM other(u"Sample_GRD"_s, &form);
    other.SetColumns(second.get(), columns());
    second->open();
    EXPECT_EQ(other.Model()->rowCount(), 5);
    second.reset();
    EXPECT_EQ(other.Model()->rowCount(), 0);
    EXPECT_FALSE(other.Query());
}
