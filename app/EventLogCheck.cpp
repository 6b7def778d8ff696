#include "app/EventLogCheck.h"

#include "app/Ask.h"
#include "host/Declaration_PKG/EventHead_unt.h"
#include "host/NewBaseForms_PKG/ListExport.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const int steps = 1000;
const int breaksTold = 10;

/// A date keeps its order in a line from right to left.
QString dateText(const QString &date)
{
    return date.isEmpty() ? u"-"_s : u"\u2066%1\u2069"_s.arg(date);
}

} // namespace

void KeepSeenHead(const TEventHead &head)
{
    if (!KeepEventHead(head))
        Tell(u"تنظیمات این ایستگاه ذخیره نشد. پرونده تنظیمات و فضای خالی دیسک را بررسی کنید."_s, miWarning);
}

TEventLogVerdict CheckEventLogWithProgress(QWidget *parent)
{
    TEventLogVerdict verdict;
    const bool done = RunWithProgress(parent, u"بررسی رویدادها"_s, steps, [&](const TProgress &progress) {
        verdict.check = CheckEventLog(KnownEventHead(), [&](qlonglong read, qlonglong all) {
            return progress(int(steps * read / std::max(all, read)));
        });
        return true;
    });
    verdict.finished = done && verdict.check.finished;
    if (verdict.finished && verdict.check.isWhole())
        KeepSeenHead(verdict.check.head);
    return verdict;
}

QString EventCheckText(const TEventCheck &check)
{
    QStringList lines;
    if (check.isWhole()) {
        lines << (check.lines == 0
                      ? u"رویدادها درست است: هنوز سطری در زنجیره نیست."_s
                      : u"رویدادها درست است: %1 سطر، از %2، و هیچ سطری تغییر نکرده یا پاک نشده است."_s
                            .arg(check.lines)
                            .arg(dateText(check.since)));
    } else {
        lines << u"رویدادها دستکاری شده است. %1 سطر بررسی شد."_s.arg(check.lines);
        int told = 0;
        for (const TEventBreak &one : check.breaks) {
            if (++told > breaksTold) {
                lines << u"و جاهای دیگر"_s;
                break;
            }
            lines
                << (one.id == 0
                        ? u"آخرین سطرها پاک شده است."_s
                        : u"سطر شماره %1 به تاریخ %2 با پیش از خود نمی خواند: خود آن یا سطر پیش از آن تغییر کرده یا پاک شده است."_s
                              .arg(one.id)
                              .arg(dateText(one.date)));
        }
        if (!check.knownHeadFound)
            lines
                << u"آخرین سطری که این ایستگاه دیده بود دیگر در رویدادها نیست: رویدادها از نو ساخته یا پشتیبان کهنه تری بازیابی شده است."_s;
        lines
            << u"اگر پشتیبانی بازیابی نشده است، پرونده پایگاه داده را همین گونه نگه دارید، آن را با پشتیبان های پیشین بسنجید و بررسی کنید چه کسانی می توانند در آن بنویسند."_s;
    }
    if (check.older > 0)
        lines << u"%1 سطر از پیش از زنجیره است و بررسی شدنی نیست."_s.arg(check.older);
    return lines.join(u'\n');
}

QString EventCheckReport(const TEventCheck &check)
{
    QString text = check.isWhole() ? u"the event log is whole: %1 lines"_s.arg(check.lines)
                                   : u"the event log is broken: %1 lines"_s.arg(check.lines);
    if (!check.since.isEmpty())
        text += u" since %1"_s.arg(check.since);
    text += u'\n';
    if (check.older > 0)
        text += u"%1 lines from before the chain cannot be checked\n"_s.arg(check.older);
    for (const TEventBreak &one : check.breaks)
        text += one.id == 0
                    ? u"the last lines were taken away\n"_s
                    : u"line %1 of %2 does not fit to what stands before it\n"_s.arg(one.id).arg(one.date);
    if (!check.knownHeadFound)
        text += u"the last line that this workstation saw is not in the log\n"_s;
    return text;
}
