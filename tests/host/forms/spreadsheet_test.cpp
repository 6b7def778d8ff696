#include "host/forms/FakeScreens.h"

#include "host/NewBaseForms_PKG/ListExport.h"
#include "host/spreadsheet/Workbook.h"

#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLibrary>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

class Spreadsheet : public Things {
protected:
    Spreadsheet() : list(&db.connection(), "List_QUR")
    {
        list.setKeyField("Code");
        for (int code = 1; code <= 3; ++code)
            db.connection().execute(TStatement::format(
                "insert into Thing(Code, Title, Cost, Day) values(%d, %s, %d, '1404/01/05')",
                {code, u"ي & <کار> %1"_s.arg(code), qlonglong(123456789012345) + code}));
    }
    // A file of the archive, unpacked by a program that is not ours.
    static QString part(const QString &file, const QString &name)
    {
        QProcess unzip;
        unzip.start("unzip", {"-p", file, name});
        EXPECT_TRUE(unzip.waitForFinished()) << "the package unzip is missing";
        EXPECT_EQ(unzip.exitCode(), 0);
        return QString::fromUtf8(unzip.readAllStandardOutput());
    }
    // The cells by rows, as the file holds them: texts as they are, numbers with a leading "=".
    static QList<QStringList> cells(const QString &file)
    {
        QList<QStringList> rows;
        QXmlStreamReader xml(part(file, "xl/worksheets/sheet1.xml"));
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == "row"_L1)
                rows.append(QStringList());
            else if (xml.name() == "v"_L1)
                rows.last() << u'=' + xml.readElementText();
            else if (xml.name() == "t"_L1)
                rows.last() << xml.readElementText();
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
        return rows;
    }
    void inList(const std::function<void(TThingList_FRM &)> &work)
    {
        TThingList_FRM screen(fmBrowse, &list);
        Keys::runModal([&] { return screen.exec(); }, [&](QWidget *) { work(screen); });
    }
    TQuery list;
    QTemporaryDir folder;
};

TEST_F(Spreadsheet, HoldsTheShownColumnsOfAllRowsWithAmountsAsNumbers)
{
    inList([&](TThingList_FRM &screen) {
        const QString file = folder.filePath(u"لیست.xlsx"_s);
        ASSERT_TRUE(WriteSpreadsheet(screen.Grid(), screen.windowTitle(), file));
        const QList<QStringList> rows = cells(file);
        ASSERT_EQ(rows.size(), 4);
        QStringList captions;
        for (const int column : screen.Grid()->ShownColumns())
            captions << screen.Grid()->Model()->columns()[column].caption.trimmed();
        EXPECT_EQ(rows[0], captions);
        EXPECT_TRUE(rows[2].contains("=2")) << "the code";
        EXPECT_TRUE(rows[2].contains(u"ي & <کار> 2"_s));
        EXPECT_TRUE(rows[2].contains("=123456789012347")) << "every digit of an amount";
        EXPECT_TRUE(part(file, "xl/worksheets/sheet1.xml").contains("rightToLeft=\"1\""));
        EXPECT_TRUE(part(file, "xl/workbook.xml").contains(u"ليست مزايا"_s));
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList(u"لیست.xlsx"_s));
    });
}

TEST_F(Spreadsheet, FollowsTheOrderAndTheHidingOfColumns)
{
    inList([&](TThingList_FRM &screen) {
        TSmartGrid_ZLM *grid = screen.Grid();
        const QList<int> before = grid->ShownColumns();
        ASSERT_GT(before.size(), 2);
        grid->horizontalHeader()->moveSection(grid->horizontalHeader()->visualIndex(before[1]), 0);
        grid->setColumnHidden(before[0], true);
        const QString file = folder.filePath("x.xlsx");
        ASSERT_TRUE(WriteSpreadsheet(grid, "x", file));
        const QList<QStringList> rows = cells(file);
        EXPECT_EQ(rows[0].size(), before.size() - 1);
        EXPECT_EQ(rows[0][0], grid->Model()->columns()[before[1]].caption.trimmed());
    });
}

TEST_F(Spreadsheet, ASheetNameTakesNoSignThatTheFormatForbids)
{
    inList([&](TThingList_FRM &screen) {
        const QString file = folder.filePath("x.xlsx");
        ASSERT_TRUE(WriteSpreadsheet(screen.Grid(),
                                     u" بدهکاري / بستانکاري [2.7]:*?\\ یک عنوان بسیار بسیار دراز "_s, file));
        EXPECT_TRUE(part(file, "xl/workbook.xml").contains(u"بدهکاري  بستانکاري 2.7"_s));
    });
}

TEST_F(Spreadsheet, AFileThatIsThereStaysWhenTheNewOneIsStoppedOrCannotBeWritten)
{
    inList([&](TThingList_FRM &screen) {
        const QString file = folder.filePath("x.xlsx");
        ASSERT_TRUE(WriteSpreadsheet(screen.Grid(), "x", file));
        const QList<QStringList> before = cells(file);
        db.connection().execute("update Thing set Title='new'");
        EXPECT_FALSE(WriteSpreadsheet(screen.Grid(), "x", file, [](int) { return false; }));
        EXPECT_EQ(cells(file), before);
        EXPECT_FALSE(WriteSpreadsheet(screen.Grid(), "x", folder.filePath("none/such/x.xlsx")));
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("x.xlsx"));
    });
}

TEST_F(Spreadsheet, TextsThatNoCellHoldsAreCutOrReplacedAndCounted)
{
    const QString loneHigh = u"a"_s + QChar(0xd83d) + u"b"_s;
    const QString loneLow = u"a"_s + QChar(0xde00) + u"b"_s;
    const QString whole = u"a"_s + QChar(0xd83d) + QChar(0xde00) + u"b"_s;
    const QString mark = QString(QChar(QChar::ReplacementCharacter));
    const QList<std::pair<QString, QString>> texts = {
        {QString(32767, u'ک'), QString(32767, u'ک')},
        {u"a"_s + QChar(0xfffe) + u"b"_s, u"a"_s + mark + u"b"_s},
        {u"a"_s + QChar(0xffff) + u"b"_s, u"a"_s + mark + u"b"_s},
        {u"a"_s + QChar(0) + QChar(7) + QChar(0x1f) + u"b"_s, u"a"_s + mark + mark + mark + u"b"_s},
        {loneHigh, u"a"_s + mark + u"b"_s},
        {loneLow, u"a"_s + mark + u"b"_s},
        {whole, whole},
        {u"a\tb"_s, u"a\tb"_s},
    };
    TNewWorkbook *newWorkbook = reinterpret_cast<TNewWorkbook *>(
        QLibrary::resolve(KETEBIONPAP_BIN "/KetebionpapSpreadsheet.so", "NewWorkbook"));
    ASSERT_TRUE(newWorkbook);
    const QString file = folder.filePath("x.xlsx");
    {
        const std::unique_ptr<TWorkbook> book(newWorkbook(file));
        ASSERT_TRUE(book->addSheet("x"));
        ASSERT_TRUE(book->setCaption(0, u"c"_s + QChar(0xffff), 100));
        for (int row = 0; row < texts.size(); ++row)
            ASSERT_TRUE(book->setText(row + 1, 0, texts[row].first)) << row;
        ASSERT_TRUE(book->setText(int(texts.size()) + 1, 0, QString(100'000, u'ک')));
        // The cut would part the two halves of a sign.
        QString smiles;
        for (int i = 0; i < 20'000; ++i)
            smiles += whole.mid(1, 2);
        ASSERT_TRUE(book->setText(int(texts.size()) + 2, 0, u"a"_s + smiles));
        ASSERT_TRUE(book->setText(int(texts.size()) + 3, 0, smiles));
        EXPECT_EQ(book->alteredTexts(), 8);
        ASSERT_TRUE(book->close());
    }
    const QList<QStringList> rows = cells(file); // well-formed, or the test fails there
    ASSERT_EQ(rows.size(), texts.size() + 4);
    EXPECT_EQ(rows[0], QStringList(u"c"_s + mark));
    for (int row = 0; row < texts.size(); ++row)
        EXPECT_EQ(rows[row + 1].value(0), texts[row].second) << row;
    for (qsizetype row = texts.size() + 1; row < rows.size(); ++row) {
        const QString text = rows[row].value(0);
        EXPECT_LE(text.size(), 32767);
        EXPECT_GT(text.size(), 32740);
        EXPECT_TRUE(text.endsWith(u"(متن بریده شد)"_s));
        EXPECT_FALSE(text.contains(mark));
    }
}

TEST_F(Spreadsheet, TheUserIsToldOfTextsThatCouldNotBeWrittenAsTheyAre)
{
    db.connection().execute(
        TStatement("update Thing set Title=").text(u"a"_s + QChar(0xffff)).sql(" where Code=2"));
    inList([&](TThingList_FRM &screen) {
        int altered = 0;
        ASSERT_TRUE(WriteSpreadsheet(screen.Grid(), "x", folder.filePath("x.xlsx"), {}, &altered));
        EXPECT_EQ(altered, 1);
    });
}

TEST_F(Spreadsheet, CtrlEAsksForTheFileAndSaysThatItIsWritten)
{
    inList([&](TThingList_FRM &screen) {
        const QString file = folder.filePath("x.xlsx");
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_E, Qt::ControlModifier);
                return 0;
            },
            [&](QWidget *widget) {
                auto *dialog = qobject_cast<QFileDialog *>(widget);
                ASSERT_TRUE(dialog);
                EXPECT_TRUE(dialog->selectedFiles().value(0).endsWith(u"ليست مزايا.xlsx"_s));
                dialog->selectFile(file);
                Keys::press(dialog, Qt::Key_Return);
            });
        EXPECT_EQ(cells(file).size(), 4);
        EXPECT_EQ(messages.take().join('|').toStdString(),
                  ("MSGCompeletedSuccessfully(ذخیره در صفحه گسترده|" + file + ")").toStdString());
    });
}

TEST_F(Spreadsheet, CtrlEDoesNothingOnAnEmptyList)
{
    db.connection().execute("delete from Thing");
    inList([&](TThingList_FRM &screen) {
        Keys::press(&screen, Qt::Key_E, Qt::ControlModifier);
        EXPECT_TRUE(screen.isActiveWindow());
        EXPECT_EQ(messages.take(), QStringList());
    });
}
