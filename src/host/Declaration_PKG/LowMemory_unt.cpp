#include "host/Declaration_PKG/LowMemory_unt.h"

#include "host/Declaration_PKG/Specialmessages.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <new>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::size_t reserveBytes = std::size_t(48) * 1024 * 1024;
constexpr std::size_t drawingBytes = std::size_t(16) * 1024 * 1024; // a large window, and what its text takes

std::unique_ptr<char[]> ask(std::size_t bytes)
{
    return std::unique_ptr<char[]>(new (std::nothrow) char[bytes]);
}

std::unique_ptr<char[]> &reserve()
{
    static std::unique_ptr<char[]> kept;
    return kept;
}

bool &ending()
{
    static bool begun = false;
    return begun;
}

/// False: there was none.
bool giveReserveBack()
{
    const bool kept = reserve() != nullptr;
    reserve().reset();
    return kept;
}

void end()
{
    if (!ending())
        std::fputs("ketebionpap: there is no memory left; the program ends\n", stderr);
    ending() = true;
    QCoreApplication::exit(1);
}

void tell()
{
    try {
        ShowSmartMessage(
            u"حافظه رایانه کافی نیست. آنچه وارد شده باقی است: آن را ذخیره کنید و برنامه های دیگر را ببندید، یا این برنامه را ببندید و دوباره باز کنید."_s,
            {}, miError);
        KeepMemoryReserve();
    } catch (const std::bad_alloc &) { // not even enough to tell
        end();
    }
}

} // namespace

void KeepMemoryReserve()
{
    if (!reserve())
        reserve() = ask(reserveBytes);
}

void TellLowMemory()
{
    if (giveReserveBack())
        tell();
    else
        end();
}

bool MemoryToDraw()
{
    if (ending())
        return false;
    if (ask(drawingBytes))
        return true;
    if (giveReserveBack() && ask(drawingBytes)) {
        QTimer::singleShot(0, &tell);
        return true;
    }
    end();
    return false;
}
