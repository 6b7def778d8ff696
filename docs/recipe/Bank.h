#pragma once

#include "common/DataModule_UNT.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

/// A bank: a record, its data module, its list and its editor, as short as a screen of the suite can be.
struct TBank_Mapper {
    int _Code = 0;
    QString _Title;  ///< at most 50 characters are stored
    QString _Branch; ///< at most 20 characters are stored
    bool _Active = true;
};

class TBank_DM : public TDataModule {
    Q_OBJECT
public:
    explicit TBank_DM(QObject *owner);
    TQuery *const List_QUR;
    TQuery *const Get_QUR;

    int Bank_GetNewCode();
    bool Bank_GetById(const QVariant &code, TBank_Mapper &bank);
    [[nodiscard]] bool Bank_Save(const TBank_Mapper &bank, bool isNew);
    [[nodiscard]] bool Bank_Delete(int code);
};

class TBankList_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TBankList_FRM(TFormMode mode, TBank_DM &data);

protected:
    void SetListText() override { ListQuery()->setStatement("select * from Bank"); }
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void DeleteRecord() override;

private:
    TBank_DM &m_data;
};
