#include "host/database/DatabaseError.h"

namespace {

struct TFaultText {
    TFault fault;
    const char *english;
    const char *persian;
};

// What happened, and what the user can do about it.
const TFaultText faultTexts[] = {
    {TFault::Refused, "refused",
     "پایگاه داده این تغییر را نپذیرفت، چون با اطلاعات دیگر سازگار نیست. مقادیر را بررسی و دوباره ذخیره کنید."},
    {TFault::Locked, "locked", "کاربر دیگری در حال کار با همین اطلاعات است. چند لحظه بعد دوباره تلاش کنید."},
    {TFault::Deadlock, "deadlock",
     "این عملیات با کار کاربر دیگری تداخل داشت و کنار گذاشته شد. دوباره تلاش کنید."},
    {TFault::ConnectionLost, "connection lost",
     "ارتباط با پایگاه داده قطع شده است. اطلاعات وارد شده باقی است؛ پس از برقراری ارتباط دوباره تلاش کنید."},
    {TFault::NoAnswer, "no answer in time",
     "سرور به موقع پاسخ نداد و این عملیات کنار گذاشته شد. اطلاعات وارد شده باقی است؛ چند لحظه بعد دوباره تلاش کنید."},
    {TFault::GivenUp, "given up by the user",
     "از پاسخ سرور چشم پوشیدید و این عملیات کنار گذاشته شد. اطلاعات وارد شده باقی است؛ هر وقت خواستید دوباره تلاش کنید."},
    {TFault::Waiting, "another request is waited for",
     "برنامه هنوز در انتظار پاسخ پیشین سرور است. چند لحظه بعد دوباره تلاش کنید."},
    {TFault::LoginRefused, "login refused",
     "سرور نام کاربر یا گذرواژه را نپذیرفت. تنظیمات ارتباط را بررسی کنید."},
    {TFault::NoRight, "no right on the server",
     "کاربر پایگاه داده اجازه این کار را روی سرور ندارد. از مدیر سرور بخواهید دسترسی لازم را بدهد."},
    {TFault::NoSuchDatabase, "no such database",
     "چنین پایگاه داده ای روی سرور نیست یا این کاربر به آن دسترسی ندارد. نام پایگاه داده را در تنظیمات ارتباط بررسی کنید."},
    {TFault::NoServer, "no server",
     "سرور پایگاه داده پیدا نشد یا پاسخ نمی دهد. نام سرور، شماره درگاه و روشن بودن سرور و شبکه را بررسی کنید."},
    {TFault::ServerFull, "server full",
     "همه اتصال های سرور در حال استفاده است. چند دقیقه بعد دوباره تلاش کنید یا به مدیر سرور خبر دهید."},
    {TFault::NoDriver, "no driver",
     "راه انداز ODBC در تنظیمات ارتباط نیامده یا روی این رایانه نصب نیست. نام راه انداز (مانند FreeTDS) و نصب آن را بررسی کنید."},
    {TFault::ChangingOver, "the server changes over",
     "سرور پایگاه داده در حال جابه جایی یا راه اندازی است. اطلاعات وارد شده باقی است؛ چند لحظه بعد دوباره تلاش کنید."},
    {TFault::NoEncryption, "no encryption",
     "سرور ارتباط رمزشده را نمی پذیرد و برنامه بدون رمز وصل نشد. از مدیر سرور بخواهید رمزنگاری (TLS) را روشن کند؛ اگر "
     "خواندن اطلاعات روی شبکه پذیرفتنی است Encrypt=no را در تنظیمات ارتباط بنویسید."},
    {TFault::UnknownIssuer, "certificate of an unknown issuer",
     "صادرکننده گواهی سرور شناخته نیست و برنامه وصل نشد. پرونده صادرکننده را با CAFile در تنظیمات ارتباط بنویسید یا آن را "
     "به گواهی های سیستم بیفزایید."},
    {TFault::OtherName, "certificate of another server",
     "گواهی سرور برای نام دیگری است و برنامه وصل نشد. نام سرور را همان گونه که در گواهی آمده بنویسید یا از مدیر سرور گواهی "
     "درست بخواهید."},
    {TFault::ExpiredCertificate, "certificate not valid at this time",
     "تاریخ گواهی سرور گذشته یا هنوز نرسیده است و برنامه وصل نشد. تاریخ این رایانه را بررسی کنید و از مدیر سرور گواهی تازه "
     "بخواهید."},
    {TFault::NoAuthorities, "no authorities",
     "پرونده صادرکنندگان گواهی (CAFile) خوانده نمی شود یا گواهی ندارد. نشانی پرونده و اجازه خواندن آن را بررسی کنید."},
    {TFault::UnknownPrivacy, "encryption unknown to the driver",
     "این راه انداز ODBC رمزنگاری و تأیید گواهی را آن گونه که خواسته شده انجام نمی دهد و برنامه وصل نشد. راه انداز FreeTDS را "
     "با نام سرور (Server) به کار ببرید یا Encrypt=no را در تنظیمات ارتباط بنویسید."},
    {TFault::UnfitPassword, "password unfit for the driver",
     "راه انداز ODBC گذرواژه ای را که «};» دارد نمی پذیرد. از مدیر سرور گذرواژه دیگری بخواهید."},
    {TFault::DiskFull, "disk full", "فضای دیسک پر است. فضایی روی دیسک خالی کنید و دوباره تلاش کنید."},
    {TFault::ReadOnly, "read only",
     "پرونده پایگاه داده فقط خواندنی است. اجازه نوشتن در پرونده و پوشه آن را بررسی کنید."},
    {TFault::CannotOpen, "cannot open",
     "پایگاه داده باز نمی شود. نشانی پرونده یا سرور و در دسترس بودن آن را بررسی کنید."},
    {TFault::NotADatabase, "not a database",
     "پرونده انتخاب شده پایگاه داده نیست یا آسیب دیده است. پرونده دیگر یا نسخه پشتیبان را انتخاب کنید."},
    {TFault::OtherProgram, "database of another program",
     "این پایگاه داده به برنامه دیگری تعلق دارد و دست نخورده ماند. پایگاه داده دیگری را انتخاب کنید."},
    {TFault::NewerSchema, "made by a newer version",
     "این پایگاه داده با نسخه جدیدتری از برنامه ساخته شده است. برنامه را به روز کنید."},
    {TFault::UnfitServer, "unfit collation",
     "ترتیب حروف (Collation) این پایگاه داده حروف فارسی را نگه نمی دارد. پایگاه داده را با "
     "Persian_100_CI_AS یا Arabic_CI_AS بسازید و دوباره تلاش کنید."},
    {TFault::BadStatement, "bad statement",
     "پایگاه داده دستور برنامه را نفهمید. نسخه برنامه و پایگاه داده را بررسی کنید."},
    {TFault::TooLong, "too long", "متن وارد شده از جای آن در پایگاه داده بلندتر است. متن را کوتاه کنید."},
    {TFault::RowGone, "row gone", "این رکورد را کاربر دیگری حذف کرده است. فهرست را دوباره باز کنید."},
    {TFault::NetworkPath, "network path",
     "پرونده پایگاه داده روی درایو شبکه است و آنجا امن نیست. پرونده را روی همین کامپیوتر بگذارید یا از سرور استفاده کنید."},
    {TFault::NoSuchFile, "no such file",
     "پرونده پایگاه داده ای به این نشانی نیست و ساخته نشد. نشانی را بررسی کنید."},
    {TFault::FileGone, "the file was removed or replaced",
     "پرونده پایگاه داده هنگام کار برداشته یا با پرونده دیگری جایگزین شده است و این تغییر ذخیره نشد. پرونده را به جای خود "
     "برگردانید و دوباره ذخیره کنید، یا اطلاعات وارد شده را یادداشت و برنامه را دوباره باز کنید."},
    {TFault::Unsound, "unsound backup",
     "این پشتیبان کامل یا سالم نیست (جدول ها، ارجاع ها یا دستورهای آن با برنامه نمی خواند) و پذیرفته نشد. پشتیبان دیگری را "
     "انتخاب کنید."},
    {TFault::BeingEdited, "being edited",
     "رکوردهایی در حال ویرایش است. نخست همه پنجره های ویرایش را در همه ایستگاه ها ببندید."},
    {TFault::Other, "failed", "در کار با پایگاه داده خطایی رخ داد. دوباره تلاش کنید."},
};

const TFaultText &textOf(TFault fault)
{
    for (const TFaultText &entry : faultTexts) {
        if (entry.fault == fault)
            return entry;
    }
    return textOf(TFault::Other);
}

} // namespace

TDatabaseError::TDatabaseError(TFault fault, const QString &detail, const QString &statement)
    : m_fault(fault), m_detail(detail), m_statement(statement)
{
    m_what = QByteArray("database: ") + textOf(fault).english + ": " + detail.toUtf8();
    if (!statement.isEmpty())
        m_what += " [" + statement.toUtf8() + "]";
}

TDatabaseError::~TDatabaseError() = default;

QString TDatabaseError::userText() const
{
    return QString::fromUtf8(textOf(m_fault).persian);
}

const char *TDatabaseError::what() const noexcept
{
    return m_what.constData();
}
