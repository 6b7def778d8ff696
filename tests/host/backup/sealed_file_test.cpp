#include "host/database/DatabaseError.h"
#include "host/database/SealedFile.h"

#include "support/TestDatabase.h"

#include <QFile>

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <sodium.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

// Files encrypted with a password, and everything that may become of them on the way.

namespace {

const int partSize = 32;
const int sealOfPart = crypto_secretstream_xchacha20poly1305_ABYTES;
/// A try costs nothing here.
const SealedFile::TShape quick{crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN, partSize};
const QString password = u"رمز-Right-7"_s;

class ASealedFile : public testing::Test {
protected:
    QString file(const char *name) const { return folder.filePath(name); }
    static void write(const QString &name, const QByteArray &bytes)
    {
        QFile out(name);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    static QByteArray read(const QString &name)
    {
        QFile in(name);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("<not there>");
    }
    static QByteArray textOf(int size)
    {
        QByteArray text;
        for (int i = 0; i < size; ++i)
            text += char('a' + i * 7 % 25);
        return text;
    }
    QByteArray sealed(const QByteArray &text, const SealedFile::TShape &shape = quick)
    {
        write(file("plain"), text);
        write(file("sealed"), {});
        SealedFile::seal(file("plain"), file("sealed"), password, shape);
        return read(file("sealed"));
    }
    /// What comes of these bytes; "" for none, with the reason in `fault`.
    QByteArray opened(const QByteArray &bytes, const QString &with = password)
    {
        fault.reset();
        write(file("sealed"), bytes);
        write(file("opened"), "what was there before");
        try {
            SealedFile::open(file("sealed"), file("opened"), with);
        } catch (const TSealError &error) {
            fault = error.fault();
            EXPECT_EQ(read(file("opened")), "") << "no part of the text is left";
            EXPECT_FALSE(error.userText().isEmpty());
        }
        return read(file("opened"));
    }

    QTemporaryDir folder;
    std::optional<TSealFault> fault;
};

/// A sealed text of several parts, taken apart.
struct TTaken {
    TTaken(const QByteArray &bytes, int textSize)
    {
        const int count = std::max(1, (textSize + partSize - 1) / partSize);
        const qsizetype headerSize = bytes.size() - textSize - count * sealOfPart;
        header = bytes.first(headerSize);
        for (qsizetype at = headerSize; at < bytes.size(); at += partSize + sealOfPart)
            parts << bytes.mid(at, partSize + sealOfPart);
    }
    QByteArray together() const { return header + parts.join(); }
    QByteArray header;
    QByteArrayList parts;
};

TEST_F(ASealedFile, GivesBackWhatWasSealedWhateverItsLength)
{
    for (int size : {0, 1, partSize - 1, partSize, partSize + 1, 5 * partSize, 5 * partSize + 7, 10000}) {
        SCOPED_TRACE(size);
        const QByteArray bytes = sealed(textOf(size));
        EXPECT_TRUE(SealedFile::isSealed(file("sealed")));
        EXPECT_EQ(opened(bytes), textOf(size));
        EXPECT_FALSE(fault.has_value());
    }
    EXPECT_FALSE(SealedFile::isSealed(file("plain")));
    EXPECT_FALSE(SealedFile::isSealed(folder.path()));
    EXPECT_FALSE(SealedFile::isSealed(file("none")));
}

TEST_F(ASealedFile, ShowsNothingOfTheTextAndIsAnotherOneEachTime)
{
    const QByteArray text(10 * partSize, 'x');
    const QByteArray first = sealed(text);
    EXPECT_FALSE(first.contains("xxxx"));
    EXPECT_FALSE(first.contains(password.toUtf8()));
    const QByteArray second = sealed(text);
    const TTaken one(first, int(text.size()));
    const TTaken other(second, int(text.size()));
    EXPECT_NE(one.header, other.header);
    for (qsizetype part = 0; part < one.parts.size(); ++part)
        EXPECT_NE(one.parts[part], other.parts[part]);
}

TEST_F(ASealedFile, IsRefusedWithEveryOtherPassword)
{
    const QByteArray bytes = sealed(textOf(100));
    for (const QString &other : {password + u' ', password.chopped(1), password.toLower(), u"x"_s}) {
        EXPECT_EQ(opened(bytes, other), "");
        EXPECT_EQ(fault, TSealFault::WrongPassword) << other.toStdString();
    }
    EXPECT_EQ(opened(bytes, {}), "");
    EXPECT_EQ(fault, TSealFault::NoPassword);
}

TEST_F(ASealedFile, TakesTheSamePasswordFromEveryKeyboard)
{
    write(file("plain"), "text");
    write(file("sealed"), {});
    SealedFile::seal(file("plain"), file("sealed"), u"کلید۱۲۳ی"_s, quick);
    const QByteArray bytes = read(file("sealed"));
    EXPECT_EQ(opened(bytes, u"كليد123ي"_s), "text");
    EXPECT_EQ(opened(bytes, u"کلید١٢٣ی"_s), "text");
}

TEST_F(ASealedFile, IsRefusedWithAnyByteChangedAndSaysThatItIsDamaged)
{
    const QByteArray whole = sealed(textOf(3 * partSize + 5));
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (int bit : {0x01, 0x80}) {
            QByteArray changed = whole;
            changed[at] = char(changed[at] ^ bit);
            ASSERT_EQ(opened(changed), "") << at;
            // Which version wrote it stands before everything that tells damage.
            const bool inVersion = at >= 17 && at < 21;
            ASSERT_EQ(fault, inVersion ? TSealFault::OtherVersion : TSealFault::Broken) << at;
        }
    }
}

TEST_F(ASealedFile, IsRefusedWithAnyLengthCutOffAndSaysThatItIsNotWhole)
{
    const QByteArray whole = sealed(textOf(3 * partSize));
    for (qsizetype size = 0; size < whole.size(); ++size) {
        ASSERT_EQ(opened(whole.first(size)), "") << size;
        ASSERT_EQ(fault, size < 17 ? TSealFault::Broken : TSealFault::Cut) << size;
    }
    EXPECT_EQ(opened(whole + 'x'), "");
    EXPECT_EQ(fault, TSealFault::Broken) << "nor with something behind it";
}

TEST_F(ASealedFile, IsRefusedWithPartsSwappedRepeatedOrLeftOut)
{
    const int size = 5 * partSize;
    const TTaken whole(sealed(textOf(size)), size);
    ASSERT_EQ(whole.parts.size(), 5);
    ASSERT_EQ(opened(whole.together()), textOf(size)) << "taken apart and put together rightly";
    for (qsizetype one = 0; one < 5; ++one) {
        for (qsizetype other = 0; other < 5; ++other) {
            if (one == other)
                continue;
            TTaken swapped = whole;
            swapped.parts.swapItemsAt(one, other);
            EXPECT_EQ(opened(swapped.together()), "") << one << ' ' << other;
            EXPECT_EQ(fault, TSealFault::Broken);
            TTaken repeated = whole; // one instead of the other, so that the length stays
            repeated.parts[other] = whole.parts[one];
            EXPECT_EQ(opened(repeated.together()), "") << one << ' ' << other;
            EXPECT_EQ(fault, TSealFault::Broken);
        }
        TTaken without = whole;
        without.parts.removeAt(one);
        EXPECT_EQ(opened(without.together()), "") << one;
        EXPECT_EQ(fault, TSealFault::Cut);
    }
}

TEST_F(ASealedFile, TakesNoPartAndNoHeaderOfAnotherOneWithTheSamePassword)
{
    const int size = 3 * partSize;
    const TTaken one(sealed(textOf(size)), size);
    const TTaken other(sealed(textOf(size)), size);
    for (qsizetype part = 0; part < one.parts.size(); ++part) {
        TTaken mixed = one;
        mixed.parts[part] = other.parts[part];
        EXPECT_EQ(opened(mixed.together()), "");
        EXPECT_EQ(fault, TSealFault::Broken);
    }
    TTaken mixed = one;
    mixed.header = other.header;
    EXPECT_EQ(opened(mixed.together()), "");
    EXPECT_EQ(fault, TSealFault::Broken);
}

/// A header whose number at this place is another one, and whose sum is right again: what a forger can do.
QByteArray forged(QByteArray bytes, int place, int size, quint64 value)
{
    for (int i = 0; i < size; ++i)
        bytes[place + i] = char(value >> (8 * i));
    const int fields = 17 + 4 + 4 + 8 + 8 + 8 + 16 + 24 + 16;
    unsigned char sum[16];
    crypto_generichash(sum, sizeof sum, reinterpret_cast<const unsigned char *>(bytes.constData()), fields,
                       nullptr, 0);
    std::copy(sum, sum + sizeof sum, bytes.begin() + fields);
    return bytes;
}

TEST_F(ASealedFile, IsRefusedWithAForgedHeaderBeforeThatCostsMemoryOrTime)
{
    const QByteArray whole = sealed(textOf(3 * partSize));
    EXPECT_EQ(opened(forged(whole, 17, 4, 1)), textOf(3 * partSize)) << "the sum is made as the program does";
    EXPECT_EQ(opened(forged(whole, 17, 4, 2)), "");
    EXPECT_EQ(fault, TSealFault::OtherVersion);
    const quint64 huge = quint64(1) << 60;
    for (const auto &[place, size, value] :
         {std::tuple(21, 4, quint64(0)), std::tuple(21, 4, quint64(1) << 31), std::tuple(25, 8, quint64(0)),
          std::tuple(25, 8, huge), std::tuple(33, 8, quint64(0)), std::tuple(33, 8, huge),
          std::tuple(41, 8, huge)}) {
        EXPECT_EQ(opened(forged(whole, place, size, value)), "");
        EXPECT_EQ(fault, TSealFault::Broken) << place << ' ' << value;
    }
    // A believable length or part size: the file is not as long as they say, or its key is another one.
    EXPECT_EQ(opened(forged(whole, 41, 8, 4 * partSize)), "");
    EXPECT_EQ(fault, TSealFault::Cut);
    EXPECT_EQ(opened(forged(whole, 33, 8, 2 * crypto_pwhash_MEMLIMIT_MIN)), "");
    EXPECT_EQ(fault, TSealFault::WrongPassword);
}

TEST_F(ASealedFile, ThatDoesNotFitOnTheDiskIsToldAsSuch)
{
    write(file("plain"), textOf(100000));
    write(file("sealed"), {});
    struct rlimit old = {};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = old;
    small.rlim_cur = 20000;
    setrlimit(RLIMIT_FSIZE, &small);
    std::optional<TFault> disk;
    try {
        SealedFile::seal(file("plain"), file("sealed"), password, quick);
    } catch (const TDatabaseError &error) {
        disk = error.fault();
    }
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(disk, TFault::DiskFull);
}

TEST_F(ASealedFile, OfAnyLengthTakesTheMemoryOfItsParts)
{
    const qint64 size = 200 << 20;
    write(file("plain"), {});
    ASSERT_TRUE(QFile::resize(file("plain"), size)); // a hole: 200 MB without a disk for them
    write(file("sealed"), {});
    write(file("opened"), {});
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        struct rusage before = {};
        getrusage(RUSAGE_SELF, &before);
        SealedFile::TShape shape = quick;
        shape.partSize = 64 * 1024;
        try {
            SealedFile::seal(file("plain"), file("sealed"), password, shape);
            SealedFile::open(file("sealed"), file("opened"), password);
        } catch (...) {
            _exit(2);
        }
        struct rusage after = {};
        getrusage(RUSAGE_SELF, &after);
        _exit(after.ru_maxrss - before.ru_maxrss < 4 * 1024 ? 0 : 1); // KB
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "1: memory, 2: it failed";
    EXPECT_EQ(QFileInfo(file("opened")).size(), size);
}

TEST_F(ASealedFile, OfTheUsualShapeCostsWhoTriesPasswords)
{
    const SealedFile::TShape shape = SealedFile::usualShape();
    EXPECT_GE(shape.memory, quint64(256) << 20);
    EXPECT_GE(shape.operations, 3u);
    EXPECT_EQ(opened(sealed("text", shape)), "text");
}

} // namespace
