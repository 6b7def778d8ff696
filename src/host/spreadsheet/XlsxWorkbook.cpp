#include "host/spreadsheet/Workbook.h"

#include <QFile>

#include <xlsxwriter.h>

#include <cmath>
#include <utility>

namespace {

constexpr double PixelsOfACharacter = 7; // of the spreadsheet's own font
constexpr int LongestSheetName = 31;     // characters (Office Open XML)

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

class TXlsxWorkbook : public TWorkbook {
public:
    explicit TXlsxWorkbook(const QString &fileName)
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
    ~TXlsxWorkbook() override { finish(); }
    Q_DISABLE_COPY_MOVE(TXlsxWorkbook)

    bool addSheet(const QString &title) override
    {
        if (m_book)
            m_sheet = workbook_add_worksheet(m_book, sheetName(title).toUtf8().constData());
        if (!m_sheet)
            return false;
        worksheet_right_to_left(m_sheet);
        worksheet_freeze_panes(m_sheet, 1, 0);
        return true;
    }
    bool setCaption(int column, const QString &caption, int width) override
    {
        return worksheet_set_column(m_sheet, lxw_col_t(column), lxw_col_t(column), width / PixelsOfACharacter,
                                    nullptr) == LXW_NO_ERROR &&
               worksheet_write_string(m_sheet, 0, lxw_col_t(column), caption.trimmed().toUtf8().constData(),
                                      m_caption) == LXW_NO_ERROR;
    }
    bool setText(int row, int column, const QString &text) override
    {
        return text.isEmpty() || worksheet_write_string(m_sheet, lxw_row_t(row), lxw_col_t(column),
                                                        text.toUtf8().constData(), nullptr) == LXW_NO_ERROR;
    }
    bool setNumber(int row, int column, double number, bool amount) override
    {
        lxw_format *format = nullptr;
        if (amount)
            format = number == std::floor(number) ? m_amount : m_fraction;
        return worksheet_write_number(m_sheet, lxw_row_t(row), lxw_col_t(column), number, format) ==
               LXW_NO_ERROR;
    }
    bool close() override { return finish(); }

private:
    bool finish()
    {
        lxw_workbook *book = std::exchange(m_book, nullptr);
        return book && workbook_close(book) == LXW_NO_ERROR;
    }

    lxw_workbook *m_book = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    lxw_format *m_caption = nullptr;
    lxw_format *m_amount = nullptr;
    lxw_format *m_fraction = nullptr;
};

} // namespace

extern "C" Q_DECL_EXPORT TNewWorkbook NewWorkbook;

TWorkbook *NewWorkbook(const QString &fileName)
{
    return new TXlsxWorkbook(fileName);
}
