#pragma once

class TConnection;

/// Ends this process with SIGKILL at a chosen point of what it does to its database: before its n-th statement or
/// write() of the file, or in the middle of a write(). Without a point it only counts them.
namespace Killer {
/// From now on; `at` 0 kills at no point.
void arm(TConnection &connection, int at);
/// Points passed since arm().
int passed();
/// No more: the connection may go.
void disarm(TConnection &connection);
} // namespace Killer
