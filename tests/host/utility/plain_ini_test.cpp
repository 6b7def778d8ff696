#include "host/Utility_ZLM/PlainIni.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class PlainIniFile : public testing::Test {
protected:
    QSettings open() const { return QSettings(name, PlainIni::format()); }
    void write(const QByteArray &text) const
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QTemporaryDir folder;
    const QString name = folder.filePath("settings.ini");
};

QByteArray allBytes()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes += char(i);
    return bytes + "ab01\"),@" + bytes;
}

const QList<std::pair<QString, QVariant>> values = {
    {"plain", "text"},
    {"Window/persian", QString(u"ستون «نام»، ۱۲"_s)},
    {"Window/signs", "a=b;c,d \"e\" \\x41 \\ [f] #"},
    {"Window/blanks", "  a  "},
    {"Window/lines", "a\nb\tc\r\n"},
    {"Window/at", "@home"},
    {"Window/smile", QString::fromUtf8("\xf0\x9f\x98\x80")},
    {"Window/geometry", allBytes()},
    {"Window/Grid", QStringList{"Code:90:1", "Title:120:0", "", "a, b"}},
    {"Window/deep/key", "1;Name,Tel"},
    {"Window/odbc", "Driver=FreeTDS;Server=x;PWD={a;b}"},
};

} // namespace

TEST_F(PlainIniFile, GivesBackWhatWasWritten)
{
    {
        QSettings settings = open();
        for (const auto &[key, value] : values)
            settings.setValue(key, value);
        settings.sync();
        ASSERT_EQ(settings.status(), QSettings::NoError);
    }
    const QSettings settings = open();
    for (const auto &[key, value] : values)
        EXPECT_EQ(settings.value(key), value) << key.toStdString();
}

TEST_F(PlainIniFile, ReadsWhatQtWroteBefore)
{
    {
        QSettings settings(name, QSettings::IniFormat);
        for (const auto &[key, value] : values)
            settings.setValue(key, value);
        settings.setValue("Window/number", 12);
    }
    const QSettings settings = open();
    for (const auto &[key, value] : values)
        EXPECT_EQ(settings.value(key), value) << key.toStdString();
    EXPECT_EQ(settings.value("Window/number").toInt(), 12);
}

TEST_F(PlainIniFile, ValuesOfOtherKindsAreNotRead)
{
    // A list of four thousand million texts, one of numbers, a picture.
    for (const QByteArray &forged :
         {QByteArray("@Variant(\\0\\0\\0\\v\\xff\\xff\\xff\\xff)"),
          QByteArray("\"@Var\"\"iant(\\0\\0\\0\\v\\xff\\xff\\xff\\xff)\""),
          QByteArray("\\x40Variant(\\0\\0\\0\\v\\xff\\xff\\xff\\xff)"), QByteArray("@Invalid()"),
          QByteArray("@DateTime(\\0\\0\\0\\x10)"), QByteArray("@Size(1000000 1000000)")}) {
        write("[W]\na=1\nb=" + forged + "\nc=2\n");
        const QSettings settings = open();
        EXPECT_EQ(settings.value("W/a"), "1");
        EXPECT_FALSE(settings.value("W/b").isValid()) << forged.toStdString();
        EXPECT_EQ(settings.value("W/c"), "2");
    }
}

TEST_F(PlainIniFile, AFileThatIsTooLargeOrNoTextCountsAsEmptyAndIsReplaced)
{
    write("[W]\na=" + QByteArray(qsizetype(PlainIni::MostBytes), 'x'));
    EXPECT_TRUE(open().allKeys().isEmpty());
    {
        QSettings settings = open();
        settings.setValue("W/a", "new");
    }
    EXPECT_EQ(open().value("W/a"), "new");
    QByteArray noise;
    for (int i = 0; i < 100'000; ++i)
        noise += char(i * 7919 >> 3);
    write(noise);
    QElapsedTimer watch;
    watch.start();
    (void)open().allKeys();
    EXPECT_LT(watch.elapsed(), 2000);
}
