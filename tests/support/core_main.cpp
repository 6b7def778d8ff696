#include "support/Surroundings.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    const Surroundings surroundings;
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("ketebionpap");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
