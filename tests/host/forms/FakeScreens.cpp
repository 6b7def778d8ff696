#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

#include <QScopedValueRollback>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

Things::Things()
{
    IniOptions.Com_Index = 1;
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    db.run(
        "create table Thing(Code integer not null primary key, Title nvarchar(50), Cost float, Day nvarchar(10))");
    db.run("create table TmpThing(Code integer not null, Name nvarchar(50))");
}

Things::~Things()
{
    UserInfo = {};
}

QString Things::locks()
{
    return db.rows("select Code, Com_Index from CodeLock_TBL order by Code");
}

TRecoveryChoice ScriptedRecovery::choose(const TRecoveryRequest &request, QWidget *)
{
    asked << request;
    return answers.isEmpty() ? TRecoveryChoice{} : answers.takeFirst();
}

TThingGet_FRM::TThingGet_FRM(const QString &text, TSoftwarePart part)
    : TBaseGet_FRM(part, false, text), m_record(DM.ADOConnection1, "Get_QUR")
{
    build();
}

TThingGet_FRM::TThingGet_FRM(int code, TSoftwarePart part)
    : TBaseGet_FRM(part, code, fmEdit, false), m_record(DM.ADOConnection1, "Get_QUR")
{
    build();
}

void TThingGet_FRM::build()
{
    SetTitle(u"روش محاسباتی"_s);
    Thing_PC = new QTabWidget(this);
    SetPages(Thing_PC);
    auto *first = AddPage(Thing_PC, u"عمومی"_s, "ts1");
    Code_EDT = AddInput(first, -1, 0, u"  &کد :"_s, "Code_EDT",
                        new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Integer, 15));
    Title_EDT = AddInput(first, -1, 0, u"  &عنوان :"_s, "Title_EDT", new TSmartEdit_ZLM(this));
    Kind_CMB = AddInput(first, -1, 0, u"  &نوع :"_s, "Kind_CMB",
                        new TSmartComboBox_ZLM(this, {u"روزانه"_s, u"ماهانه"_s}));
    Used_CHK = AddInput(first, -1, 0, {}, "Used_CHK", new TSmartCheckBox_ZLM(u"م&شمول"_s, this));
    auto *second = AddPage(Thing_PC, u"حضور و غیاب"_s, "ts2");
    Comment_EDT = AddInput(second, -1, 0, u"  ش&رح :"_s, "Comment_EDT", new TSmartEdit_ZLM(this), u"ساعت"_s);
    Body()->addWidget(Thing_PC);
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
}

bool TThingGet_FRM::Validate()
{
    hooks << "Validate";
    if (!Title_EDT->IsEmpty())
        return true;
    MsgRequiredField(u"عنوان"_s, Title_EDT, this);
    FocusInput(Title_EDT);
    return false;
}

void TThingGet_FRM::ClearRecord()
{
    hooks << "ClearRecord";
    Code_EDT->SetValue(Identifier());
    Title_EDT->Clear();
    Comment_EDT->Clear();
}

void TThingGet_FRM::LoadRecord()
{
    hooks << "LoadRecord";
    m_record.setStatement(TStatement("select * from Thing where Code=").integer(Identifier()));
    m_record.open();
}

void TThingGet_FRM::ShowRecord()
{
    hooks << "ShowRecord";
    Code_EDT->SetValue(m_record.value("Code"));
    Title_EDT->SetText(m_record.asString("Title"));
}

bool TThingGet_FRM::SaveRecord()
{
    hooks << "SaveRecord";
    if (leaveTransactionOpen)
        DM.ADOConnection1->BeginTrans();
    if (Mode() == fmNew)
        DM.ADOConnection1->execute(TStatement("insert into Thing(Code, Title) values(")
                                       .integer(Code_EDT->GetValue())
                                       .sql(", ")
                                       .text(Title_EDT->GetText())
                                       .sql(")"));
    else
        DM.ADOConnection1->execute(TStatement("update Thing set Title=")
                                       .text(Title_EDT->GetText())
                                       .sql(" where Code=")
                                       .integer(Identifier()));
    if (refuseSave) {
        MSGFinishedNotSuccessfully(u"ذخيره سازي "_s, u"ذخيره سازي"_s);
        return false;
    }
    SetIdentifier(Code_EDT->GetValue());
    MSGCompeletedSuccessfully(u"ذخيره سازي "_s);
    return true;
}

void TThingGet_FRM::NewCode()
{
    hooks << "NewCode";
    AllotCode([] {
        return DM.ADOConnection1->scalar(TStatement("select isnull(max(Code),0)+1 from Thing")).toInt();
    });
}

bool TThingGet_FRM::RecordExists()
{
    return !DM.ADOConnection1->scalar(TStatement("select Code from Thing where Code=").integer(Identifier()))
                .isNull();
}

void TThingGet_FRM::BeforeClose()
{
    hooks << "BeforeClose";
    DM.ADOConnection1->execute(TStatement("delete from TmpThing where Code=").integer(Identifier()));
}

QStringList TThingRows::LeftCodes()
{
    TQuery query(DM.ADOConnection1, "Temp_QUR");
    query.setStatement(
        TStatement::format("select Code from TmpThing where Code in (select cast(Code as bigint) from "
                           "CodeLock_TBL where Status=%d and Com_Index=%d)",
                           {int(m_part), IniOptions.Com_Index}));
    query.open();
    QStringList codes;
    for (int row = 0; row < query.recordCount(); ++row)
        codes << query.valueAt(namesOneCode ? 0 : row, 0).toString();
    return codes;
}

bool TThingRows::AreLeft(const QString &code)
{
    const QScopedValueRollback all(namesOneCode, false);
    return LeftCodes().contains(code);
}

void TThingRows::TakeUp(const QString &leftCode, const QString &newCode)
{
    DM.ADOConnection1->execute(
        TStatement("update TmpThing set Code=").integer(newCode).sql(" where Code=").integer(leftCode));
}

void TThingRows::Discard(const QString &code)
{
    DM.ADOConnection1->execute(TStatement("delete from TmpThing where Code=").integer(code));
}

void TThingRows::DiscardAll()
{
    for (const QString &code : LeftCodes())
        Discard(code);
    DM.ADOConnection1->execute(TStatement::format("delete from CodeLock_TBL where Status=%d and Com_Index=%d",
                                                  {int(m_part), IniOptions.Com_Index}));
}

TThing_GetDetail_FRM::TThing_GetDetail_FRM(int master) : TBaseGetDetail_FRM(cspCalcMethod, master)
{
    build();
}

TThing_GetDetail_FRM::TThing_GetDetail_FRM(int master, int row)
    : TBaseGetDetail_FRM(cspCalcMethod, master, fmEdit, row)
{
    build();
}

void TThing_GetDetail_FRM::build()
{
    auto *grid = new QGridLayout;
    Body()->addLayout(grid);
    Name_EDT = AddInput(grid, -1, 0, u"  &نام :"_s, "Name_EDT", new TSmartEdit_ZLM(this));
    BuildFooter(u"ذخيره و خروج F3"_s, u"خروج Esc"_s);
}

bool TThing_GetDetail_FRM::Validate()
{
    return !Name_EDT->IsEmpty();
}

void TThing_GetDetail_FRM::ClearRecord()
{
    Name_EDT->Clear();
}

void TThing_GetDetail_FRM::ShowRecord()
{
    Name_EDT->SetText(DM.ADOConnection1->scalar(TStatement("select Name from TmpThing")).toString());
}

bool TThing_GetDetail_FRM::SaveRecord()
{
    DM.ADOConnection1->execute(TStatement("insert into TmpThing(Code, Name) values(")
                                   .integer(Master())
                                   .sql(", ")
                                   .text(Name_EDT->GetText())
                                   .sql(")"));
    return true;
}

void TThing_GetDetail_FRM::NewCode() {}

bool TThing_GetDetail_FRM::RecordExists()
{
    return DM.ADOConnection1->scalar(TStatement("select count(*) from TmpThing")).toInt() > 0;
}

TThingList_FRM::TThingList_FRM(TFormMode mode, TQuery *list) : TBaseDock_FRM(mode, {})
{
    SetTitle(u" ليست مزايا "_s);
    BuildList(list, "Thing_GRD",
              {{"Code", u"کد"_s, 60, true, TGridColumn::Code},
               {"Title", u"عنوان"_s, 220},
               {"Cost", u"مبلغ"_s, 120, true, TGridColumn::Money},
               {"Day", u"تاریخ"_s, 90, false}},
              {{"Code", u"کد"_s, TSearchItem::Digits}, {"Title", u"عنوان"_s, TSearchItem::Text, true}});
    BuildUsualLayout(u"ليست روش هاي محاسباتي"_s);
    BuildButtons(true, true);
}

void TThingList_FRM::SetListText()
{
    ListQuery()->setStatement(TStatement("select * from Thing"));
}

TBaseGet_FRM *TThingList_FRM::CreateEditor(bool newRecord)
{
    return newRecord ? new TThingGet_FRM : new TThingGet_FRM(ListQuery()->asInteger("Code"));
}

void TThingList_FRM::DeleteRecord()
{
    const int code = ListQuery()->asInteger("Code");
    if (!BeginDelete(cspCalcMethod, QString::number(code)))
        return;
    DM.ADOConnection1->execute(TStatement("delete from Thing where Code=").integer(code));
    RefreshList();
}

bool TThingList_FRM::SelectRecord()
{
    SelectedCode = ListQuery()->asInteger("Code");
    return !refuseSelection;
}

int open(TBaseEditor &editor, const std::function<void()> &work)
{
    return Keys::runModal([&] { return editor.exec(); },
                          [&](QWidget *screen) {
                              Keys::waitFor([&] { return screen->isActiveWindow(); });
                              work();
                          });
}
