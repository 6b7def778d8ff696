#include "host/Declaration_PKG/Password_unt.h"

#include "host/Utility_ZLM/PersianText.h"

#include <QHash>
#include <QList>

#include <sodium.h>
#include <zxcvbn.h>

#include <new>
#include <stdexcept>
#include <vector>

#include <sys/mman.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const double enoughBits = 26.57; // 10^8 tries
const int judgedLength = 100;    // what is longer is not weaker
const int shortestWord = 3;      // of a name that counts as guessable

void startSodium()
{
    if (sodium_init() < 0)
        throw std::runtime_error("the password library does not start");
}

/// The library gives one answer for a wrong password and for memory that it did not get: whether it could have got it is
/// asked before and after. Throws std::bad_alloc.
void needMemory()
{
    const size_t size = crypto_pwhash_MEMLIMIT_INTERACTIVE + (size_t(1) << 20);
    void *place = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED)
        throw std::bad_alloc();
    munmap(place, size);
}

/// The key of a Persian letter on a Persian keyboard: the library knows Latin letters and rows of their keys only, and
/// would take each byte of another letter for one that nobody can guess.
QString asKeys(const QString &text)
{
    static const QString letters = u"ضصثقفغعهخحجچشسیبلاتنمکگظطزرذدپوآژئءؤأيك؟،؛"_s;
    static const QString keys = u"qwertyuiop[]asdfghjkl;'zxcvbnm,hcmmahd;?,;"_s;
    Q_ASSERT(letters.size() == keys.size());
    QString typed = PersianText::latinDigits(text);
    for (QChar &sign : typed) {
        if (sign.unicode() < 0x80)
            continue;
        const qsizetype place = letters.indexOf(sign);
        sign = place >= 0 ? keys.at(place) : QChar(u'a' + sign.unicode() % 26);
    }
    return typed;
}

/// Words that are tried before others here, and the user's own names.
std::vector<QByteArray> guessableWords(const QStringList &names)
{
    static const QStringList usual{
        u"گذرواژه"_s,  u"رمز"_s,     u"رمزعبور"_s,  u"عبور"_s,        u"سلام"_s,     u"ایران"_s, u"تهران"_s,
        u"حقوق"_s,     u"دستمزد"_s,  u"کارمند"_s,   u"کاربر"_s,       u"مدیر"_s,     u"محمد"_s,  u"علی"_s,
        u"حسین"_s,     u"رضا"_s,     u"فاطمه"_s,    u"زهرا"_s,        u"مریم"_s,     u"خدا"_s,   u"شرکت"_s,
        u"حسابداری"_s, u"عشق"_s,     u"iran"_s,     u"tehran"_s,      u"salam"_s,    u"ramz"_s,  u"hoghogh"_s,
        u"payroll"_s,  u"karmand"_s, u"hesabdar"_s, u"ketebionpap"_s, u"mohammad"_s, u"modir"_s};
    std::vector<QByteArray> words;
    QStringList all = usual;
    for (const QString &name : names) {
        all << name.simplified();
        all << name.simplified().split(u' ', Qt::SkipEmptyParts);
    }
    for (const QString &word : std::as_const(all))
        if (word.size() >= shortestWord)
            words.push_back(asKeys(word).toLower().toUtf8());
    return words;
}

/// What most of the password is made of, of all that is guessed without trying every sign.
QString reasonOf(const ZxcMatch_t *matches)
{
    QHash<int, int> lengths;
    for (const ZxcMatch_t *match = matches; match; match = match->Next)
        lengths[match->Type % MULTIPLE_MATCH] += match->Length;
    const auto longest = [&](std::initializer_list<int> kinds) {
        int sum = 0;
        for (const int kind : kinds)
            sum += lengths.value(kind);
        return sum;
    };
    const std::pair<int, QString> reasons[] = {
        {longest({USER_MATCH, USER_LEET_MATCH}),
         u"این گذرواژه از نام کاربر یا واژه ای که زود حدس زده می شود ساخته شده است."_s},
        {longest({DICTIONARY_MATCH, DICT_LEET_MATCH}), u"این گذرواژه واژه ای شناخته شده است."_s},
        {longest({REPEATS_MATCH}), u"این گذرواژه تکرار چند نویسه است."_s},
        {longest({SEQUENCE_MATCH, SPATIAL_MATCH}),
         u"این گذرواژه رشته ای از حروف، ارقام یا کلیدهای پشت سر هم است."_s},
        {longest({DATE_MATCH, YEAR_MATCH}), u"این گذرواژه از یک تاریخ یا سال ساخته شده است."_s}};
    int most = 0;
    QString reason = u"این گذرواژه کوتاه و ساده است."_s;
    for (const auto &[length, text] : reasons) {
        if (length > most) {
            most = length;
            reason = text;
        }
    }
    return reason;
}

} // namespace

QByteArray HashOfPassword(const QString &password)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    char hash[crypto_pwhash_STRBYTES] = {};
    if (crypto_pwhash_str(hash, text.constData(), size_t(text.size()), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::bad_alloc();
    return QByteArray(hash);
}

bool PasswordMatches(const QByteArray &hash, const QString &password)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    needMemory();
    if (crypto_pwhash_str_verify(hash.constData(), text.constData(), size_t(text.size())) == 0)
        return true;
    needMemory();
    return false;
}

bool IsOldPasswordHash(const QByteArray &hash)
{
    return crypto_pwhash_str_needs_rehash(hash.constData(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0;
}

QString PasswordComplaint(const QString &password, const QStringList &names)
{
    if (password.size() < MinimalPasswordLength)
        return u"گذرواژه باید دست کم %1 نویسه باشد."_s.arg(MinimalPasswordLength);
    const std::vector<QByteArray> words = guessableWords(names);
    std::vector<const char *> list;
    for (const QByteArray &word : words)
        list.push_back(word.constData());
    list.push_back(nullptr);
    ZxcMatch_t *matches = nullptr;
    const double bits =
        ZxcvbnMatch(asKeys(password.left(judgedLength)).toUtf8().constData(), list.data(), &matches);
    const QString reason = bits < enoughBits ? reasonOf(matches) : QString();
    ZxcvbnFreeInfo(matches);
    return reason.isEmpty()
               ? QString()
               : reason + u" چند واژه بی ارتباط با هم، یا حروف و ارقام و نشانه های بیشتری وارد کنید."_s;
}
