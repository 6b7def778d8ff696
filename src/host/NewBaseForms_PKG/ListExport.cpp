#include "host/NewBaseForms_PKG/ListExport.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/database/Query.h"

#include <QFile>
#include <QFileDialog>
#include <QProgressDialog>

#include <xlsxwriter.h>

#include <cmath>
#include <memory>

namespace {

constexpr double PixelsOfACharacter = 7; // of the spreadsheet's own font
constexpr int ProgressEvery = 200;       // rows
constexpr int LongestSheetName = 31;     // characters (Office Open XML)
const QString UnfinishedSuffix = QStringLiteral(".part");

// A sheet's name may not hold these.
QString sheetName(const QString &title)
{
    QString name;
    for (const QChar c : title.trimmed()) {
        if (!QStringLiteral("[]:*?/\\'").contains(c))
            name += c;
    }
    return name.left(LongestSheetName);
}

class TWorkbook {
public:
    explicit TWorkbook(const QString &fileName)
    {
        const QByteArray file = QFile::encodeName(fileName);
        // The rows go to a temporary file as they come, whatever their number.
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        m_book = workbook_new_opt(file.constData(), &options);
        if (!m_book)
            return;
        m_caption = workbook_add_format(m_book);
        format_set_bold(m_caption);
        format_set_bg_color(m_caption, 0xE6E6E6);
        format_set_border(m_caption, LXW_BORDER_THIN);
        m_amount = workbook_add_format(m_book);
        format_set_num_format(m_amount, "#,##0");
        m_fraction = workbook_add_format(m_book);
        format_set_num_format(m_fraction, "#,##0.0########");
    }
    ~TWorkbook() { close(); }
    Q_DISABLE_COPY_MOVE(TWorkbook)

    bool addSheet(const QString &title)
    {
        if (m_book)
            m_sheet = workbook_add_worksheet(m_book, sheetName(title).toUtf8().constData());
        if (!m_sheet)
            return false;
        worksheet_right_to_left(m_sheet);
        worksheet_freeze_panes(m_sheet, 1, 0);
        return true;
    }
    bool setCaption(int column, const QString &caption, int width)
    {
        return worksheet_set_column(m_sheet, lxw_col_t(column), lxw_col_t(column), width / PixelsOfACharacter,
                                    nullptr) == LXW_NO_ERROR &&
               worksheet_write_string(m_sheet, 0, lxw_col_t(column), caption.trimmed().toUtf8().constData(),
                                      m_caption) == LXW_NO_ERROR;
    }
    bool setText(int row, int column, const QString &text)
    {
        return text.isEmpty() || worksheet_write_string(m_sheet, lxw_row_t(row), lxw_col_t(column),
                                                        text.toUtf8().constData(), nullptr) == LXW_NO_ERROR;
    }
    bool setNumber(int row, int column, double number, bool amount)
    {
        lxw_format *format = nullptr;
        if (amount)
            format = number == std::floor(number) ? m_amount : m_fraction;
        return worksheet_write_number(m_sheet, lxw_row_t(row), lxw_col_t(column), number, format) ==
               LXW_NO_ERROR;
    }
    bool close()
    {
        lxw_workbook *book = std::exchange(m_book, nullptr);
        return book && workbook_close(book) == LXW_NO_ERROR;
    }

private:
    lxw_workbook *m_book = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    lxw_format *m_caption = nullptr;
    lxw_format *m_amount = nullptr;
    lxw_format *m_fraction = nullptr;
};

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

bool writeRow(TWorkbook &book, const TSmartGrid_ZLM *grid, const QList<int> &shown, int row)
{
    TQuery *query = grid->Query();
    for (int place = 0; place < shown.size(); ++place) {
        const TGridColumn &column = grid->Model()->columns().at(shown[place]);
        if (column.format == TGridColumn::RowNumber) {
            if (!book.setNumber(row + 1, place, row + 1, false))
                return false;
            continue;
        }
        const int field = query->fieldIndex(column.field);
        const QVariant value = field < 0 ? QVariant() : query->valueAt(row, field);
        const bool number = !value.isNull() && column.format != TGridColumn::YesNo && isNumber(value);
        const bool written =
            number ? book.setNumber(row + 1, place, value.toDouble(), column.format == TGridColumn::Money)
                   : book.setText(row + 1, place, ShownInGrid(column, value));
        if (!written)
            return false;
    }
    return true;
}

bool writeBook(TWorkbook &book, const TSmartGrid_ZLM *grid, const QString &title, const TProgress &progress)
{
    const int rows = grid->Model()->rowCount();
    if (rows > SpreadsheetRows || !book.addSheet(title))
        return false;
    const QList<int> shown = grid->ShownColumns();
    for (int place = 0; place < shown.size(); ++place) {
        if (!book.setCaption(place, grid->Model()->columns().at(shown[place]).caption,
                             grid->columnWidth(shown[place])))
            return false;
    }
    for (int row = 0; row < rows; ++row) {
        if (!writeRow(book, grid, shown, row))
            return false;
        if (progress && row % ProgressEvery == 0 && !progress(row + 1))
            return false;
    }
    return book.close();
}

} // namespace

QString AskFileToWrite(QWidget *parent, const QString &caption, const QString &title, const QString &suffix)
{
    QFileDialog dialog(parent, caption);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(QStringLiteral("%1 (*.%2)").arg(suffix.toUpper(), suffix));
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(QString(title).replace(u'/', u'-') + u'.' + suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

bool RunWithProgress(QWidget *parent, const QString &caption, int steps,
                     const std::function<bool(const TProgress &)> &work)
{
    QProgressDialog progress(caption, u"انصراف"_qs, 0, steps, parent);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(800);
    try {
        return work([&progress](int step) {
            progress.setValue(step);
            return !progress.wasCanceled();
        });
    } catch (const TDatabaseError &error) {
        MsgDatabaseError(error);
    }
    return false;
}

bool ReplaceFile(const QString &unfinished, const QString &fileName)
{
    if (QFile::exists(unfinished)) {
        QFile::remove(fileName);
        if (QFile::rename(unfinished, fileName))
            return true;
    }
    QFile::remove(unfinished);
    return false;
}

bool WriteSpreadsheet(const TSmartGrid_ZLM *grid, const QString &title, const QString &fileName,
                      const TProgress &progress)
{
    const QString unfinished = fileName + UnfinishedSuffix;
    bool written = false;
    try {
        TWorkbook book(unfinished);
        written = writeBook(book, grid, title, progress);
    } catch (const TDatabaseError &) {
        QFile::remove(unfinished);
        throw;
    }
    if (written)
        return ReplaceFile(unfinished, fileName);
    QFile::remove(unfinished);
    return false;
}

void ExportSpreadsheet(const TSmartGrid_ZLM *grid, const QString &title, QWidget *parent)
{
    const QString caption = u"ذخیره در صفحه گسترده"_qs;
    const QString fileName = AskFileToWrite(parent, caption, title.trimmed(), QStringLiteral("xlsx"));
    if (fileName.isEmpty())
        return;
    const int rows = grid->Model()->rowCount();
    if (rows > SpreadsheetRows) {
        ShowSmartMessage(
            u"لیست بیش از %1 سطر دارد و در یک صفحه گسترده جا نمی شود. لیست را با جستجو کوتاه کنید."_qs.arg(
                SpreadsheetRows),
            {}, miWarning);
        return;
    }
    const bool written = RunWithProgress(parent, caption, rows, [&](const TProgress &progress) {
        return WriteSpreadsheet(grid, title, fileName, progress);
    });
    if (written)
        MSGCompeletedSuccessfully(caption, fileName, const_cast<TSmartGrid_ZLM *>(grid));
    else
        ShowSmartMessage(u"فایل صفحه گسترده ذخیره نشد. مسیر فایل و فضای خالی دیسک را بررسی کنید."_qs,
                         fileName, miError);
}
