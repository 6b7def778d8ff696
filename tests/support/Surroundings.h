#pragma once

#include <QTemporaryDir>

/// The same surroundings for the tests on every machine: UTF-8, no locale of the user's, folders of the run's own. Made
/// before the application, gone after it.
class Surroundings {
public:
    Surroundings();

private:
    QTemporaryDir m_folders;
};
