#pragma once

#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/NewBaseForms_PKG/ListExport.h"

#include <QStringList>

#include <memory>

class QLabel;
class QPainter;
class QPrinter;
class QScrollArea;
class TQueryModel;
class TSmartGrid_ZLM;

/// Prints the rows of a list page by page: title, date, page numbers, the grid's visible columns in the order on the
/// screen under a header row on every page. Columns that cannot be read when they share a page go on on the next ones,
/// beside their first column again. Rows are read as their page is printed; none is kept.
class KETEBIONPAP_HOST TListPrinter {
public:
    TListPrinter(const TSmartGrid_ZLM *grid, const QString &title);

    /// A4 upright, or lying when the columns need it.
    void SetUpPage(QPrinter &printer) const;
    /// Pages of the whole list on this printer's paper.
    int PageCount(QPrinter &printer) const;
    /// Paints one page (1-based), margins included, in the printer's dots: for a preview.
    void PaintPage(QPainter &painter, QPrinter &printer, int page) const;
    /// Prints pages `first` to `last` (1-based; last 0: to the end). `progress` is told each page and answers false to
    /// stop. False: the printer or the file failed, or it was stopped.
    bool Print(QPrinter &printer, int first = 1, int last = 0, const TProgress &progress = {}) const;
    /// Writes the whole list as a PDF file, the user's alone; a file that is there is replaced only by a complete one.
    bool ExportPdf(const QString &fileName, const QPrinter &like, const TProgress &progress = {}) const;

private:
    struct TColumn {
        int section;
        QString caption;
        double width;
    };
    struct TMeasures;
    TMeasures measure(QPrinter &printer) const;
    int pageCount(const TMeasures &sizes) const;
    void paintPage(QPainter &painter, const TMeasures &sizes, int page, int pages) const;
    void paintCell(QPainter &painter, const QRectF &cell, Qt::Alignment alignment, const QString &text,
                   double padding) const;

    /// What stands side by side on paper of this width, in the columns' measure.
    QList<QList<TColumn>> partsOf(double width) const;

    const TQueryModel *m_model;
    QString m_title;
    QList<TColumn> m_columns;
    double m_width = 0; ///< of all columns together, as on the screen
};

/// The preview of a printed list, page by page, with printing and PDF export. Only the page that is shown is painted.
class KETEBIONPAP_HOST TListPreview_FRM : public TBaseForm {
    Q_OBJECT
public:
    /// The door is asked again before each printing and each file.
    TListPreview_FRM(const TSmartGrid_ZLM *grid, const TListDoor &door, QWidget *parent);
    ~TListPreview_FRM() override;

    int PageCount() const { return m_pages; }
    int CurrentPage() const { return m_current; }
    /// Writes the PDF file and tells the user how it went. True on success.
    bool ExportPdf(const QString &fileName);

protected:
    bool HandleKey(QKeyEvent *event) override;
    void EnterKey() override {}
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void turnTo(int page);
    void zoom(double factor); ///< 0: the whole width of the page
    void paperChanged();
    void fit();
    void askPdf();
    void print();
    qlonglong rows() const;
    TListPrinter m_list;
    const TSmartGrid_ZLM *m_grid;
    TListDoor m_door;
    QString m_title;
    std::unique_ptr<QPrinter> m_printer;
    QScrollArea *m_area;
    QWidget *m_paper;
    QLabel *m_page;
    int m_pages = 1;
    int m_current = 1;
    double m_zoom = 0; ///< screen dots for a dot of the printer; 0: as the window's width allows
};
