#include "host/Declaration_PKG/Guarded_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/LowMemory_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/database/SealedFile.h"

#include <new>

using namespace Qt::Literals::StringLiterals;

void TellFault()
{
    try {
        throw;
    } catch (const TDatabaseError &error) {
        if (DM.ADOConnection1)
            DM.ADOConnection1->noteError(error);
        MsgDatabaseError(error);
    } catch (const TSealError &error) {
        qWarning("%s", error.what());
        ShowSmartMessage(error.userText(), {}, miWarning);
    } catch (const std::bad_alloc &) {
        TellLowMemory();
    } catch (const std::exception &error) {
        MsgDatabaseError(TDatabaseError(TFault::Other, QString::fromUtf8(error.what())));
    } catch (...) {
        MsgDatabaseError(TDatabaseError(TFault::Other, u"an unknown exception"_s));
    }
}

bool Guarded(const std::function<void()> &work)
{
    try {
        work();
        return true;
    } catch (...) {
        TellFault();
        return false;
    }
}
