#include "common/DataModule_UNT.h"

TDataModule::TDataModule(QObject *owner) : QObject(owner) {}

TQuery *TDataModule::NewQuery(const QString &name)
{
    return new TQuery(DM.ADOConnection1, name, this);
}
