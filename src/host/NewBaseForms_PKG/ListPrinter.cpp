#include "host/NewBaseForms_PKG/ListPrinter.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Utility_ZLM/PrivateFile.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QApplication>
#include <QFile>
#include <QFontMetricsF>
#include <QHeaderView>
#include <QPainter>
#include <QPrinter>
#include <QStyle>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double ScreenDotsPerInch = 96;
constexpr double SmallestScale = 0.55; // below that a 10 point font cannot be read on paper
constexpr double SplitScale = 0.75;    // of a list whose columns go on on further pages

// The suite's font in the paper's dots, whatever device it is painted on.
QFont paperFont(double dotsPerPoint, double scale, bool bold)
{
    QFont font = QApplication::font();
    const double points = font.pointSizeF() > 0 ? font.pointSizeF() : 10;
    font.setPixelSize(std::max(1, int(std::lround(points * scale * dotsPerPoint))));
    font.setBold(bold);
    return font;
}

} // namespace

struct TListPrinter::TMeasures {
    QRectF page;
    QFont font;
    QFont headFont;
    QFont titleFont;
    double titleHeight = 0;
    double rowHeight = 0;
    double padding = 0;
    double scale = 1; ///< from the columns' widths on the screen to the paper's dots
    int rows = 1;     ///< rows of a page
    /// The columns that stand side by side; those of a wide list take several pages, each beginning with the first one.
    QList<QList<TColumn>> parts;
};

TListPrinter::TListPrinter(const TSmartGrid_ZLM *grid, const QString &title)
    : m_model(grid->Model()), m_title(title)
{
    const QHeaderView *header = grid->horizontalHeader();
    for (const int section : grid->ShownColumns()) {
        TColumn column{section, m_model->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString(),
                       double(grid->columnWidth(section))};
        // The last column fills the window; on paper it is as wide as it was meant to be.
        if (header->stretchLastSection() &&
            header->sectionPosition(section) + header->sectionSize(section) >= header->length()) {
            const int meant = grid->Model()->columns().at(section).width;
            const double caption = QFontMetricsF(header->font()).horizontalAdvance(column.caption) + 20;
            column.width = std::min(column.width, std::max(meant > 0 ? double(meant) : 120.0, caption));
        }
        m_width += column.width;
        m_columns.append(column);
    }
}

void TListPrinter::SetUpPage(QPrinter &printer) const
{
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
    printer.setDocName(m_title.trimmed());
    printer.setPageOrientation(QPageLayout::Portrait);
    const double upright = printer.pageRect(QPrinter::Inch).width() * ScreenDotsPerInch;
    if (m_width > upright)
        printer.setPageOrientation(QPageLayout::Landscape);
}

TListPrinter::TMeasures TListPrinter::measure(QPrinter &printer) const
{
    TMeasures sizes;
    sizes.page = QRectF(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size());
    const double dots = printer.resolution() / ScreenDotsPerInch;
    const double fitting = m_width > 0 ? sizes.page.width() / (m_width * dots) : 1;
    const double fontScale = fitting < SmallestScale ? SplitScale : std::min(fitting, 1.0);
    const double dotsPerPoint = printer.resolution() / 72.0;
    sizes.scale = dots * fontScale;
    sizes.parts = partsOf(sizes.page.width() / sizes.scale);
    sizes.font = paperFont(dotsPerPoint, fontScale, false);
    sizes.headFont = paperFont(dotsPerPoint, fontScale, true);
    sizes.titleFont = paperFont(dotsPerPoint, 1, true);
    sizes.padding = 3 * sizes.scale;
    sizes.rowHeight = QFontMetricsF(sizes.headFont).height() * 1.25;
    sizes.titleHeight = QFontMetricsF(sizes.titleFont).height() * 2;
    sizes.rows = std::max(1, int((sizes.page.height() - sizes.titleHeight) / sizes.rowHeight) - 1);
    return sizes;
}

QList<QList<TListPrinter::TColumn>> TListPrinter::partsOf(double width) const
{
    QList<QList<TColumn>> parts(1);
    double used = 0;
    for (TColumn column : m_columns) {
        // Rounding must not move the last column of a list that just fits.
        if (used + column.width > width * 1.001 && parts.last().size() > (parts.size() > 1 ? 1 : 0)) {
            TColumn first = m_columns.first();
            first.width = std::min(first.width, width / 2);
            parts.append({first});
            used = first.width;
        }
        column.width = std::min(column.width, std::max(width - used, width / 4));
        parts.last().append(column);
        used += column.width;
    }
    return parts;
}

int TListPrinter::PageCount(QPrinter &printer) const
{
    return pageCount(measure(printer));
}

int TListPrinter::pageCount(const TMeasures &sizes) const
{
    return std::max(1, (m_model->rowCount() + sizes.rows - 1) / sizes.rows) * int(sizes.parts.size());
}

bool TListPrinter::Print(QPrinter &printer, int first, int last, const TProgress &progress) const
{
    const TMeasures sizes = measure(printer);
    const int pages = pageCount(sizes);
    if (last <= 0 || last > pages)
        last = pages;
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    for (int page = std::max(1, first); page <= last; ++page) {
        if (page > first && !printer.newPage())
            return false;
        paintPage(painter, sizes, page, pages);
        if (progress && !progress(page)) {
            painter.end();
            return false;
        }
    }
    return painter.end() && printer.printerState() != QPrinter::Error;
}

void TListPrinter::PaintPage(QPainter &painter, QPrinter &printer, int page) const
{
    painter.save();
    painter.translate(printer.pageRect(QPrinter::DevicePixel).topLeft());
    const TMeasures sizes = measure(printer);
    paintPage(painter, sizes, page, pageCount(sizes));
    painter.restore();
}

void TListPrinter::paintCell(QPainter &painter, const QRectF &cell, Qt::Alignment alignment,
                             const QString &text, double padding) const
{
    const QRectF inner = cell.adjusted(padding, 0, -padding, 0);
    painter.drawText(inner, int(alignment | Qt::AlignVCenter | Qt::AlignAbsolute) | Qt::TextSingleLine,
                     QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, inner.width()));
}

void TListPrinter::paintPage(QPainter &painter, const TMeasures &sizes, int page, int pages) const
{
    painter.setLayoutDirection(Qt::RightToLeft);
    const QRectF head(0, 0, sizes.page.width(), sizes.titleHeight * 0.8);
    painter.setPen(QPen(Qt::black, std::max(1.0, sizes.scale / 2)));
    painter.setFont(sizes.titleFont);
    paintCell(painter, head, Qt::AlignHCenter, m_title.trimmed(), 0);
    painter.setFont(sizes.font);
    paintCell(painter, head, Qt::AlignRight, u"تاریخ : %1"_s.arg(NowDate()), 0);
    paintCell(painter, head, Qt::AlignLeft, u"صفحه %1 از %2"_s.arg(page).arg(pages), 0);

    const QList<TColumn> &columns = sizes.parts.at((page - 1) % sizes.parts.size());
    const int firstRow = (page - 1) / int(sizes.parts.size()) * sizes.rows;
    const int rows = std::min(sizes.rows, m_model->rowCount() - firstRow);
    for (int line = -1; line < rows; ++line) { // -1: the header row
        m_model->bringRow(firstRow + line);
        const double top = sizes.titleHeight + (line + 1) * sizes.rowHeight;
        painter.setFont(line < 0 ? sizes.headFont : sizes.font);
        double right = sizes.page.width();
        for (const TColumn &column : columns) {
            const double width = column.width * sizes.scale;
            const QRectF cell(right - width, top, width, sizes.rowHeight);
            right -= width;
            if (line < 0)
                painter.fillRect(cell, QColor(230, 230, 230));
            painter.drawRect(cell);
            if (line < 0) {
                paintCell(painter, cell, Qt::AlignHCenter, column.caption, sizes.padding);
                continue;
            }
            const QModelIndex index = m_model->index(firstRow + line, column.section);
            Qt::Alignment alignment = Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt());
            if (!(alignment & Qt::AlignHorizontal_Mask))
                alignment |= Qt::AlignLeading;
            paintCell(painter, cell,
                      QStyle::visualAlignment(Qt::RightToLeft, alignment) & Qt::AlignHorizontal_Mask,
                      index.data(Qt::DisplayRole).toString(), sizes.padding);
        }
    }
}

bool TListPrinter::ExportPdf(const QString &fileName, const QPrinter &like, const TProgress &progress) const
{
    const QString unfinished = fileName + u".part"_s;
    if (!PrivateFile::make(unfinished))
        return false;
    bool written = false;
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(unfinished);
        printer.setPageLayout(like.pageLayout());
        printer.setDocName(m_title.trimmed());
        written = Print(printer, 1, 0, progress);
    }
    if (written)
        return ReplaceFile(unfinished, fileName);
    QFile::remove(unfinished);
    return false;
}
