#include "host/database/Backup.h"
#include "host/database/SealedFile.h"

#include <QByteArray>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sodium.h>
#include <sqlite3.h>
#include <unistd.h>

#include <vector>

// A backup of 200 MB with a password, against one without, against the bare cipher, and against a bare copy. All of them
// end on the disk.

namespace {

const int megabytes = 200;
const int partSize = 64 * 1024;

/// A database with a table of noise, made once.
const QString &database()
{
    static const QTemporaryDir folder;
    static const QString name = [] {
        const QString file = folder.filePath("big.db");
        sqlite3 *db = nullptr;
        sqlite3_open(file.toUtf8().constData(), &db);
        const QByteArray sql =
            "create table Filler(Bytes blob); with recursive n(i) as (select 1 union all select i+1 from n where i<" +
            QByteArray::number(megabytes) + ") insert into Filler select randomblob(1048576-512) from n";
        sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
        sqlite3_close(db);
        return file;
    }();
    return name;
}

QString beside(const char *name)
{
    return database() + QLatin1String(name);
}

void setRate(benchmark::State &state)
{
    state.SetBytesProcessed(int64_t(state.iterations()) * megabytes * 1024 * 1024);
}

void BackupWithoutPassword(benchmark::State &state)
{
    for (auto _ : state)
        Backup::save(database(), beside(".plain-backup"));
    setRate(state);
}

void BackupWithPassword(benchmark::State &state)
{
    for (auto _ : state)
        Backup::save(database(), beside(".sealed-backup"), "Right-Horse-7");
    setRate(state);
}

int opened(const QString &name, int flags)
{
    return ::open(name.toUtf8().constData(), flags, 0600);
}

void PasswordAlone(benchmark::State &state)
{
    if (sodium_init() < 0)
        state.SkipWithError("no libsodium");
    const SealedFile::TShape shape = SealedFile::usualShape();
    unsigned char key[64];
    const unsigned char salt[crypto_pwhash_SALTBYTES] = {};
    for (auto _ : state)
        benchmark::DoNotOptimize(crypto_pwhash(key, sizeof key, "Right-Horse-7", 13, salt, shape.operations,
                                               size_t(shape.memory), crypto_pwhash_ALG_ARGON2ID13));
}

/// Encrypted, brought to the disk, and read back; the password costs next to nothing.
void SealOfTheSuite(benchmark::State &state)
{
    ::close(opened(beside(".sealed"), O_RDWR | O_CREAT));
    const SealedFile::TShape shape{crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN, partSize};
    for (auto _ : state)
        SealedFile::seal(database(), beside(".sealed"), "Right-Horse-7", shape);
    setRate(state);
}

/// The same by the library alone.
void RawSecretStream(benchmark::State &state)
{
    unsigned char key[crypto_secretstream_xchacha20poly1305_KEYBYTES] = {};
    unsigned char header[crypto_secretstream_xchacha20poly1305_HEADERBYTES];
    std::vector<unsigned char> text(partSize);
    std::vector<unsigned char> sealed(partSize + crypto_secretstream_xchacha20poly1305_ABYTES);
    for (auto _ : state) {
        crypto_secretstream_xchacha20poly1305_state stream;
        crypto_secretstream_xchacha20poly1305_init_push(&stream, header, key);
        const int from = opened(database(), O_RDONLY);
        const int to = opened(beside(".raw"), O_RDWR | O_CREAT | O_TRUNC);
        bool right = true;
        for (ssize_t got = 0; (got = ::read(from, text.data(), text.size())) > 0;) {
            unsigned long long size = 0;
            crypto_secretstream_xchacha20poly1305_push(&stream, sealed.data(), &size, text.data(),
                                                       size_t(got), nullptr, 0, 0);
            right = right && ::write(to, sealed.data(), size) == ssize_t(size);
        }
        right = right && ::fsync(to) == 0;
        ::posix_fadvise(to, 0, 0, POSIX_FADV_DONTNEED);
        ::lseek(to, 0, SEEK_SET);
        crypto_secretstream_xchacha20poly1305_init_pull(&stream, header, key);
        for (ssize_t got = 0; (got = ::read(to, sealed.data(), sealed.size())) > 0;)
            right = right &&
                    crypto_secretstream_xchacha20poly1305_pull(&stream, text.data(), nullptr, nullptr,
                                                               sealed.data(), size_t(got), nullptr, 0) == 0;
        ::close(from);
        ::close(to);
        if (!right) {
            state.SkipWithError("the library's own round failed");
            break;
        }
    }
    setRate(state);
}

void RawCopy(benchmark::State &state)
{
    std::vector<unsigned char> text(partSize);
    for (auto _ : state) {
        const int from = opened(database(), O_RDONLY);
        const int to = opened(beside(".copy"), O_RDWR | O_CREAT | O_TRUNC);
        bool right = true;
        for (ssize_t got = 0; (got = ::read(from, text.data(), text.size())) > 0;)
            right = right && ::write(to, text.data(), size_t(got)) == got;
        right = right && ::fsync(to) == 0;
        ::close(from);
        ::close(to);
        if (!right) {
            state.SkipWithError("the copy failed");
            break;
        }
    }
    setRate(state);
}

} // namespace

BENCHMARK(RawCopy)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(RawSecretStream)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SealOfTheSuite)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BackupWithoutPassword)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BackupWithPassword)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(PasswordAlone)->Unit(benchmark::kMillisecond)->UseRealTime();
