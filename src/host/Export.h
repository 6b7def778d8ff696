#pragma once

#include <QtGlobal>

/// What a library shows to those above it; all else stays inside. A class that is derived from, thrown or created by
/// others stands here as a whole, a function one by one.
#define KETEBIONPAP_CORE Q_DECL_EXPORT
#define KETEBIONPAP_HOST Q_DECL_EXPORT
