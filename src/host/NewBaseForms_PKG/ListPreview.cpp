#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"

#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int ShadowWidth = 6;
}

TListPreview_FRM::TListPreview_FRM(const TSmartGrid_ZLM *grid, const TListDoor &door, QWidget *parent)
    : TBaseForm(parent), m_list(grid, door.title), m_grid(grid), m_door(door), m_title(door.title.trimmed()),
      m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution)), m_area(new QScrollArea(this)),
      m_paper(new QWidget), m_page(new QLabel(this))
{
    SetTitle(u"پیش نمایش - %1"_s.arg(m_title));
    m_list.SetUpPage(*m_printer);
    m_paper->setObjectName(u"Paper"_s);
    m_paper->installEventFilter(this);
    m_area->setObjectName(u"Preview"_s);
    m_area->setWidget(m_paper);
    m_area->installEventFilter(this);
    m_area->viewport()->installEventFilter(this);
    m_area->setAlignment(Qt::AlignCenter);
    m_area->setBackgroundRole(QPalette::Dark);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // fitting the width must not change the width
    m_page->setObjectName(u"Page_LBL"_s);
    m_page->setAlignment(Qt::AlignCenter);
    Body()->addWidget(m_area, 1);
    Body()->addWidget(m_page);

    struct TButton {
        const char *name;
        QString caption;
        const char *key;
        std::function<void()> action;
    };
    const TButton buttons[] = {
        {"Print_BTN", u"چاپ Ctrl+P"_s, "Ctrl+P", [this] { print(); }},
        {"Pdf_BTN", u"ذخیره PDF Ctrl+S"_s, "Ctrl+S", [this] { askPdf(); }},
        {"Prior_BTN", u"صفحه قبل"_s, "PgUp", [this] { turnTo(m_current - 1); }},
        {"Next_BTN", u"صفحه بعد"_s, "PgDown", [this] { turnTo(m_current + 1); }},
        {"ZoomIn_BTN", u"بزرگتر"_s, "Ctrl++", [this] { zoom(1.25); }},
        {"ZoomOut_BTN", u"کوچکتر"_s, "Ctrl+-", [this] { zoom(0.8); }},
        {"FitWidth_BTN", u"عرض صفحه"_s, "Ctrl+0", [this] { zoom(0); }},
        {"Orientation_BTN", u"افقی / عمودی"_s, "Ctrl+L",
         [this] {
             m_printer->setPageOrientation(m_printer->pageLayout().orientation() == QPageLayout::Portrait
                                               ? QPageLayout::Landscape
                                               : QPageLayout::Portrait);
             paperChanged();
         }},
        {"EXit_BTN", u"خروج Esc"_s, "Esc", [this] { reject(); }},
    };
    for (const TButton &row : buttons) {
        TSmartButton_ZLM *button =
            AddButton(QString::fromLatin1(row.name), row.caption, QString::fromLatin1(row.key), row.caption);
        connect(button, &QAbstractButton::clicked, this, row.action);
    }
    resize(900, 700);
    paperChanged();
    m_area->setFocus();
}

TListPreview_FRM::~TListPreview_FRM() = default;

void TListPreview_FRM::paperChanged()
{
    m_pages = m_list.PageCount(*m_printer);
    fit();
    turnTo(std::min(m_current, m_pages));
}

void TListPreview_FRM::fit()
{
    const QSizeF dots = m_printer->paperRect(QPrinter::DevicePixel).size();
    double scale = m_zoom;
    if (scale <= 0)
        scale = std::max(0.01, (m_area->viewport()->width() - 2.0 * ShadowWidth) / dots.width());
    m_paper->resize((dots * scale).toSize() + QSize(ShadowWidth, ShadowWidth));
    m_paper->update();
}

void TListPreview_FRM::zoom(double factor)
{
    const double now = (m_paper->width() - ShadowWidth) / m_printer->paperRect(QPrinter::DevicePixel).width();
    const double dotsOfScreen = 96.0 / m_printer->resolution();
    m_zoom = factor > 0 ? std::clamp(now * factor, dotsOfScreen / 5, dotsOfScreen * 5) : 0;
    fit();
}

bool TListPreview_FRM::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_paper && event->type() == QEvent::Paint) {
        QPainter painter(m_paper);
        const QSize size = m_paper->size() - QSize(ShadowWidth, ShadowWidth);
        painter.fillRect(QRect(QPoint(ShadowWidth, ShadowWidth), size), QColor(0, 0, 0, 90));
        painter.fillRect(QRect(QPoint(0, 0), size), Qt::white);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        const QSizeF dots = m_printer->paperRect(QPrinter::DevicePixel).size();
        painter.scale(size.width() / dots.width(), size.height() / dots.height());
        m_list.PaintPage(painter, *m_printer, m_current);
        return true;
    }
    if (event->type() == QEvent::Resize && watched == m_area->viewport())
        fit();
    if (watched == m_area && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_PageUp || key == Qt::Key_PageDown) { // the arrows scroll, these turn
            turnTo(m_current + (key == Qt::Key_PageDown ? 1 : -1));
            return true;
        }
    }
    return TBaseForm::eventFilter(watched, event);
}

void TListPreview_FRM::turnTo(int page)
{
    if (page < 1 || page > m_pages)
        return;
    m_current = page;
    m_page->setText(u"صفحه %1 از %2"_s.arg(m_current).arg(m_pages));
    m_area->verticalScrollBar()->setValue(0);
    m_paper->update();
}

bool TListPreview_FRM::HandleKey(QKeyEvent *event)
{
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier && (event->key() == Qt::Key_Home || event->key() == Qt::Key_End)) {
        turnTo(event->key() == Qt::Key_Home ? 1 : m_pages);
        return true;
    }
    if (modifiers == Qt::ControlModifier && event->key() == Qt::Key_Equal) { // the plus key without Shift
        zoom(1.25);
        return true;
    }
    return TBaseForm::HandleKey(event);
}

qlonglong TListPreview_FRM::rows() const
{
    return m_grid->Model()->rowCount();
}

bool TListPreview_FRM::ExportPdf(const QString &fileName)
{
    if (!m_door.letOut(u"خروجی PDF"_s, rows(), fileName))
        return false;
    const bool written = RunWithProgress(this, u"ذخیره PDF"_s, m_pages, [&](const TProgress &progress) {
        return m_list.ExportPdf(fileName, *m_printer, progress);
    });
    if (written)
        MSGCompeletedSuccessfully(u"ذخیره PDF"_s, fileName, m_area);
    else
        ShowSmartMessage(u"فایل PDF ذخیره نشد. مسیر فایل و فضای خالی دیسک را بررسی کنید."_s, fileName,
                         miError);
    return written;
}

void TListPreview_FRM::askPdf()
{
    if (!m_door.mayTakeOut())
        return;
    const QString fileName = AskFileToWrite(this, u"ذخیره PDF"_s, m_title, u"pdf"_s);
    if (!fileName.isEmpty())
        ExportPdf(fileName);
}

void TListPreview_FRM::print()
{
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        ShowSmartMessage(u"چاپگری در این رایانه نصب نشده است. می توانید لیست را به صورت PDF ذخیره کنید."_s,
                         {}, miWarning);
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(m_printer->pageLayout());
    printer.setDocName(m_title);
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_list.PageCount(printer));
    // Its own way to a file looks into the files of the folder; the PDF button is the way.
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (!m_door.letOut(u"چاپ"_s, rows()))
        return;
    const bool range = dialog.printRange() == QAbstractPrintDialog::PageRange;
    const bool printed = RunWithProgress(this, u"چاپ"_s, m_pages, [&](const TProgress &progress) {
        return m_list.Print(printer, range ? dialog.fromPage() : 1, range ? dialog.toPage() : 0, progress);
    });
    if (!printed)
        ShowSmartMessage(u"چاپ لیست به پایان نرسید."_s, {}, miError);
}
