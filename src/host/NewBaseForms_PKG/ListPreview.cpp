#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"

#include <QFileDialog>
#include <QLabel>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <QVBoxLayout>

TListPreview_FRM::TListPreview_FRM(const TSmartGrid_ZLM *grid, const QString &title, QWidget *parent)
    : TBaseForm(parent), m_list(grid, title), m_title(title.trimmed()),
      m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
    SetTitle(u"پیش نمایش - %1"_qs.arg(m_title));
    m_list.SetUpPage(*m_printer);
    m_preview = new QPrintPreviewWidget(m_printer.get(), this);
    m_preview->setObjectName(QStringLiteral("Preview"));
    // The pages stand as on paper; only their contents run from right to left.
    m_preview->setLayoutDirection(Qt::LeftToRight);
    m_page = new QLabel(this);
    m_page->setObjectName(QStringLiteral("Page_LBL"));
    m_page->setAlignment(Qt::AlignCenter);
    Body()->addWidget(m_preview, 1);
    Body()->addWidget(m_page);
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter *printer) {
        m_pages = m_list.PageCount(*printer);
        m_list.Print(*printer, 1, ShownPages);
    });
    connect(m_preview, &QPrintPreviewWidget::previewChanged, this, &TListPreview_FRM::showPageNumber);

    struct TButton {
        const char *name;
        QString caption;
        const char *key;
        std::function<void()> action;
    };
    const TButton buttons[] = {
        {"Print_BTN", u"چاپ Ctrl+P"_qs, "Ctrl+P", [this] { print(); }},
        {"Pdf_BTN", u"ذخیره PDF Ctrl+S"_qs, "Ctrl+S", [this] { askPdf(); }},
        {"Prior_BTN", u"صفحه قبل"_qs, "PgUp", [this] { turnTo(m_preview->currentPage() - 1); }},
        {"Next_BTN", u"صفحه بعد"_qs, "PgDown", [this] { turnTo(m_preview->currentPage() + 1); }},
        {"ZoomIn_BTN", u"بزرگتر"_qs, "Ctrl++", [this] { m_preview->zoomIn(); }},
        {"ZoomOut_BTN", u"کوچکتر"_qs, "Ctrl+-", [this] { m_preview->zoomOut(); }},
        {"FitWidth_BTN", u"عرض صفحه"_qs, "Ctrl+0", [this] { m_preview->fitToWidth(); }},
        {"Orientation_BTN", u"افقی / عمودی"_qs, "Ctrl+L",
         [this] {
             m_preview->setOrientation(m_printer->pageLayout().orientation() == QPageLayout::Portrait
                                           ? QPageLayout::Landscape
                                           : QPageLayout::Portrait);
         }},
        {"EXit_BTN", u"خروج Esc"_qs, "Esc", [this] { reject(); }},
    };
    for (const TButton &row : buttons) {
        TSmartButton_ZLM *button =
            AddButton(QString::fromLatin1(row.name), row.caption, QString::fromLatin1(row.key));
        connect(button, &QAbstractButton::clicked, this, row.action);
    }
    resize(900, 700);
    m_preview->setFocus();
}

TListPreview_FRM::~TListPreview_FRM() = default;

void TListPreview_FRM::turnTo(int page)
{
    if (page >= 1 && page <= m_preview->pageCount())
        m_preview->setCurrentPage(page);
}

void TListPreview_FRM::showPageNumber()
{
    QString text = u"صفحه %1 از %2"_qs.arg(m_preview->currentPage()).arg(m_pages);
    if (m_pages > ShownPages)
        text += u" (تنها %1 صفحه نخست نمایش داده می شود؛ چاپ و PDF همه صفحه ها را دارد)"_qs.arg(ShownPages);
    m_page->setText(text);
}

bool TListPreview_FRM::HandleKey(QKeyEvent *event)
{
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_Home) {
        turnTo(1);
        return true;
    }
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_End) {
        turnTo(m_preview->pageCount());
        return true;
    }
    return TBaseForm::HandleKey(event);
}

bool TListPreview_FRM::run(const QString &caption,
                           const std::function<bool(const std::function<bool(int)> &)> &work)
{
    QProgressDialog progress(caption, u"انصراف"_qs, 0, m_list.PageCount(*m_printer), this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(800);
    return work([&progress](int page) {
        progress.setValue(page);
        return !progress.wasCanceled();
    });
}

bool TListPreview_FRM::ExportPdf(const QString &fileName)
{
    const bool written = run(u"ذخیره PDF"_qs, [&](const std::function<bool(int)> &progress) {
        return m_list.ExportPdf(fileName, *m_printer, progress);
    });
    if (written)
        MSGCompeletedSuccessfully(u"ذخیره PDF"_qs, fileName, m_preview);
    else
        ShowSmartMessage(u"فایل PDF ذخیره نشد. مسیر فایل و فضای خالی دیسک را بررسی کنید."_qs, fileName,
                         miError);
    return written;
}

void TListPreview_FRM::askPdf()
{
    QFileDialog dialog(this, u"ذخیره PDF"_qs);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(QStringLiteral("PDF (*.pdf)"));
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(m_title + QStringLiteral(".pdf"));
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        ExportPdf(dialog.selectedFiles().constFirst());
}

void TListPreview_FRM::print()
{
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        ShowSmartMessage(u"چاپگری در این رایانه نصب نشده است. می توانید لیست را به صورت PDF ذخیره کنید."_qs,
                         {}, miWarning);
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(m_printer->pageLayout());
    printer.setDocName(m_title);
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_list.PageCount(printer));
    if (dialog.exec() != QDialog::Accepted)
        return;
    const bool range = dialog.printRange() == QAbstractPrintDialog::PageRange;
    const bool printed = run(u"چاپ"_qs, [&](const std::function<bool(int)> &progress) {
        return m_list.Print(printer, range ? dialog.fromPage() : 1, range ? dialog.toPage() : 0, progress);
    });
    if (!printed)
        ShowSmartMessage(u"چاپ لیست به پایان نرسید."_qs, {}, miError);
}
