#include "host/NewBaseForms_PKG/ListExport.h"

#include "host/Component_ZLM/FileDialogs.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PrivateFile.h"
#include "host/database/Query.h"
#include "host/spreadsheet/Workbook.h"

#include <QFile>
#include <QFileInfo>
#include <QProgressDialog>

#include <dlfcn.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int ProgressEvery = 200; // rows
const QString UnfinishedSuffix = u".part"_s;

/// What makes workbooks, or null and why: a library of its own, loaded when the first list is written, since few
/// starts of a program ever write one. It stands beside the host library.
TNewWorkbook *workbookMaker(QString *reason = nullptr)
{
    Dl_info host{};
    if (dladdr(reinterpret_cast<void *>(&WriteSpreadsheet), &host) == 0)
        return nullptr;
    const QString file =
        QFileInfo(QFile::decodeName(host.dli_fname)).absolutePath() + u"/KetebionpapSpreadsheet.so"_s;
    void *library = dlopen(QFile::encodeName(file).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void *maker = library ? dlsym(library, "NewWorkbook") : nullptr;
    if (!maker && reason)
        *reason = QString::fromLocal8Bit(dlerror());
    return reinterpret_cast<TNewWorkbook *>(maker);
}

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
        const bool number =
            !value.isNull() && !column.nameOf && column.format != TGridColumn::YesNo && isNumber(value);
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
    return FileDialogs::AskToSave(parent, {.caption = caption,
                                           .filter = u"%1 (*.%2)"_s.arg(suffix.toUpper(), suffix),
                                           .suffix = suffix,
                                           .name = QString(title).replace(u'/', u'-') + u'.' + suffix});
}

bool RunWithProgress(QWidget *parent, const QString &caption, int steps,
                     const std::function<bool(const TProgress &)> &work)
{
    QProgressDialog progress(caption, u"انصراف"_s, 0, steps, parent);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(800);
    bool done = false;
    Guarded([&] {
        done = work([&progress](int step) {
            progress.setValue(step);
            return !progress.wasCanceled();
        });
    });
    return done;
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
                      const TProgress &progress, int *altered)
{
    const QString unfinished = fileName + UnfinishedSuffix;
    TNewWorkbook *newWorkbook = workbookMaker();
    if (!newWorkbook)
        return false;
    bool written = false;
    if (!PrivateFile::make(unfinished))
        return false;
    try {
        const std::unique_ptr<TWorkbook> book(newWorkbook(unfinished));
        written = writeBook(*book, grid, title, progress);
        if (altered)
            *altered = book->alteredTexts();
    } catch (const TDatabaseError &) {
        QFile::remove(unfinished);
        throw;
    }
    if (written)
        return ReplaceFile(unfinished, fileName);
    QFile::remove(unfinished);
    return false;
}

void ExportSpreadsheet(const TSmartGrid_ZLM *grid, const TListDoor &door, QWidget *parent)
{
    if (!door.mayTakeOut())
        return;
    const QString caption = u"ذخیره در صفحه گسترده"_s;
    const QString fileName = AskFileToWrite(parent, caption, door.title.trimmed(), u"xlsx"_s);
    if (fileName.isEmpty())
        return;
    const int rows = grid->Model()->rowCount();
    if (rows > SpreadsheetRows) {
        ShowSmartMessage(
            u"لیست بیش از %1 سطر دارد و در یک صفحه گسترده جا نمی شود. لیست را با جستجو کوتاه کنید."_s.arg(
                SpreadsheetRows),
            {}, miWarning);
        return;
    }
    QString reason;
    if (!workbookMaker(&reason)) {
        ShowSmartMessage(u"برنامه کامل نصب نشده است و نمی تواند صفحه گسترده بسازد. آن را دوباره نصب کنید."_s,
                         reason, miError);
        return;
    }
    door.note(u"خروجی صفحه گسترده"_s, rows, fileName);
    int altered = 0;
    const bool written = RunWithProgress(parent, caption, rows, [&](const TProgress &progress) {
        return WriteSpreadsheet(grid, door.title, fileName, progress, &altered);
    });
    if (written && altered > 0)
        ShowSmartMessage(
            u"%1 متن همان گونه که هست در صفحه گسترده جا نمی شد: از متن بلندتر از 32767 نویسه تنها آغاز آن نوشته شد، و به جای نویسه هایی که صفحه گسترده نمی پذیرد نشانه � آمد."_s
                .arg(altered),
            {}, miWarning);
    if (written)
        MSGCompeletedSuccessfully(caption, fileName, const_cast<TSmartGrid_ZLM *>(grid));
    else
        ShowSmartMessage(u"فایل صفحه گسترده ذخیره نشد. مسیر فایل و فضای خالی دیسک را بررسی کنید."_s, fileName,
                         miError);
}
