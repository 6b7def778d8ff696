#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

class Options : public testing::Test {
protected:
    QString path(const char *name = "folder/ketebionpap.ini") const { return folder.filePath(name); }
    void write(const QByteArray &content) const
    {
        QFile file(path("x.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    TIniOptions read() const
    {
        TIniOptions options;
        options.load(path("x.ini"));
        return options;
    }
    QTemporaryDir folder;
};

TEST_F(Options, TheIndexComesBack)
{
    TIniOptions options;
    options.load(path());
    EXPECT_TRUE(options.IsNew);
    EXPECT_EQ(options.Com_Index, 1);
    EXPECT_EQ(options.FileName, path());
    options.Com_Index = 12;
    EXPECT_TRUE(options.save());
    TIniOptions again;
    again.load(path());
    EXPECT_FALSE(again.IsNew);
    EXPECT_EQ(again.Com_Index, 12);
}

TEST_F(Options, OnlyTheUserReadsTheFile)
{
    TIniOptions options;
    options.load(path());
    ASSERT_TRUE(options.save());
    const auto users = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFileInfo(path()).permissions() & ~users, QFile::Permissions());
    EXPECT_EQ(QFileInfo(path("folder")).permissions() &
                  (QFile::ReadOther | QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup),
              QFile::Permissions());
    // A file that others could read is closed to them at the next save.
    QFile::setPermissions(path(), users | QFile::ReadOther | QFile::ReadGroup);
    ASSERT_TRUE(options.save());
    EXPECT_EQ(QFileInfo(path()).permissions() & ~users, QFile::Permissions());
}

TEST_F(Options, ABrokenFileLeavesTheDefaults)
{
    for (const char *content :
         {"", "rubbish \x01\xff\n[[[", "[Workstation]\nCom_Index=abc\n", "[Workstation]\nCom_Index=0\n",
          "[Workstation]\nCom_Index=-3\n", "[Workstation]\nCom_Index=99999999999999\n"}) {
        write(content);
        EXPECT_EQ(read().Com_Index, 1) << content;
        EXPECT_TRUE(read().IsNew) << content;
    }
    write("[Workstation]\nCom_Index=5\n");
    EXPECT_EQ(read().Com_Index, 5);
}

TEST_F(Options, OtherEntriesOfTheFileStay)
{
    write("[Database]\nfile=/somewhere\n\n[Workstation]\nCom_Index=5\n");
    TIniOptions options = read();
    options.Com_Index = 6;
    ASSERT_TRUE(options.save());
    QFile file(path("x.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    EXPECT_TRUE(content.contains("file=\"/somewhere\"")) << content.toStdString();
    EXPECT_TRUE(content.contains("Com_Index=\"6\""));
    EXPECT_EQ(read().Com_Index, 6);
}

TEST_F(Options, AFileThatCannotBeWrittenIsReported)
{
    write("");
    TIniOptions options;
    options.load(path("x.ini/below/ketebionpap.ini")); // a file stands where the folder should be
    EXPECT_FALSE(options.save());
    EXPECT_EQ(options.Com_Index, 1);
}

TEST_F(Options, WithoutANameTheUsersConfigurationFolderHasTheFile)
{
    TIniOptions options;
    options.load();
    EXPECT_TRUE(options.FileName.endsWith("/ketebionpap/ketebionpap.ini"));
    EXPECT_TRUE(options.FileName.startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
}
