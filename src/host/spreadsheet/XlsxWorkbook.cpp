#include "host/spreadsheet/Workbook.h"

#include <QFile>

#include <xlsxwriter.h>

#include <cmath>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double PixelsOfACharacter = 7; // of the spreadsheet's own font
constexpr int LongestSheetName = 31;     // characters (Office Open XML)

constexpr qsizetype LongestText = 32767; // UTF-16 units in a cell (Office Open XML)
const QString CutNote = u" … (متن بریده شد)"_s;

/// Whether XML may hold the sign. A surrogate is judged with its neighbour.
bool isForbidden(char32_t sign)
{
    if (sign < U' ')
        return sign != U'\t' && sign != U'\n' && sign != U'\r';
    return QChar::isSurrogate(sign) || sign == 0xfffe || sign == 0xffff;
}

/// The text as a cell can hold it.
QString fitting(const QString &text)
{
    QString fit;
    fit.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar sign = text[i];
        if (sign.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            fit.append(sign).append(text[++i]);
        else
            fit += isForbidden(sign.unicode()) ? QChar(QChar::ReplacementCharacter) : sign;
    }
    if (fit.size() <= LongestText)
        return fit;
    qsizetype length = LongestText - CutNote.size();
    if (fit[length - 1].isHighSurrogate())
        --length;
    return fit.left(length) + CutNote;
}

// A sheet's name may not hold these.
QString sheetName(const QString &title)
{
    QString name;
    for (const QChar c : title.trimmed()) {
        if (!u"[]:*?/\\'"_s.contains(c))
            name += c;
    }
    if (name.size() > LongestSheetName)
        name.truncate(name[LongestSheetName - 1].isHighSurrogate() ? LongestSheetName - 1 : LongestSheetName);
    return fitting(name);
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
               worksheet_write_string(m_sheet, 0, lxw_col_t(column),
                                      fitting(caption.trimmed()).toUtf8().constData(),
                                      m_caption) == LXW_NO_ERROR;
    }
    bool setText(int row, int column, const QString &text) override
    {
        if (text.isEmpty())
            return true;
        const QString fit = fitting(text);
        m_altered += fit == text ? 0 : 1;
        return worksheet_write_string(m_sheet, lxw_row_t(row), lxw_col_t(column), fit.toUtf8().constData(),
                                      nullptr) == LXW_NO_ERROR;
    }
    bool setNumber(int row, int column, double number, bool amount) override
    {
        lxw_format *format = nullptr;
        if (amount)
            format = number == std::floor(number) ? m_amount : m_fraction;
        return worksheet_write_number(m_sheet, lxw_row_t(row), lxw_col_t(column), number, format) ==
               LXW_NO_ERROR;
    }
    int alteredTexts() const override { return m_altered; }
    bool close() override { return finish(); }

private:
    bool finish()
    {
        lxw_workbook *book = std::exchange(m_book, nullptr);
        return book && workbook_close(book) == LXW_NO_ERROR;
    }

    lxw_workbook *m_book = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    int m_altered = 0;
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
