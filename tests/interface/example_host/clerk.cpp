#include "interface/Clerk.h"

namespace {

/// Linked into the documents' example: somebody who is at work as soon as there is an application, chooses from every
/// list and leaves every other screen.
void comeToWork()
{
    auto *clerk = new TClerk;
    clerk->setParent(qApp);
    clerk->answer = TClerk::Chooses;
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(comeToWork)
