#include "support/TestUser.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Engine.h"

#include <QScopeGuard>

using namespace Qt::Literals::StringLiterals;

void SeatUser(const TUserInfo &user)
{
    UserInfo = user;
    // Past the statements that a test counts, traces or lets fail; programs of one test may do so at once.
    TEngine &engine = DM.ADOConnection1->engine();
    engine.begin();
    const auto done = qScopeGuard([&] { engine.commit(); });
    const QVariantList flags{user.IsAdmin ? 1 : 0, user.IsActive ? 1 : 0, user.Code};
    if (engine.execute({u"update UserAccount set IsAdmin=?, IsActive=? where Code=?"_s, flags, {}}) > 0)
        return;
    const auto sameName =
        engine.select({u"select Code from UserAccount where Name=?"_s, {user.Name}, {}})->next();
    const QString name = sameName ? u"%1-%2"_s.arg(user.Name).arg(user.Code) : user.Name;
    engine.execute(
        {u"insert into UserAccount(IsAdmin, IsActive, Code, Name, FailedCount) values(?,?,?,?,0)"_s,
         flags + QVariantList{name},
         {}});
}
