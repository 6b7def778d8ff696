#include "entity/EntityScreens.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

EntityScreens::EntityScreens()
{
    IniOptions.Com_Index = 1;
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    for (const char *sql : {"insert into FiscalGrp(Code,Name) values(1,N'ثابت')",
                            "insert into FiscalGrp(Code,Name) values(2,N'اضافه کار')",
                            "insert into DeductionGrp(Code,Name) values(5,N'قانونی')",
                            "insert into DeductionGrp(Code,Name) values(6,N'وام')",
                            "insert into AccountTotal(Kol,Name) values(31,N'پرداختنی')",
                            "insert into AccountTotal(Kol,Name) values(61,N'پرسنلی')",
                            "insert into AccountAssistant(Kol,Moin,Name) values(31,2,N'بیمه')",
                            "insert into AccountAssistant(Kol,Moin,Name) values(61,1,N'حقوق')",
                            "insert into AccountAssistant(Kol,Moin,Name) values(61,2,N'مزایا')",
                            "insert into AccountDetail(Tafzili,Name) values(1,N'تولید')",
                            "insert into AccountDetail(Tafzili,Name) values(2,N'فروش')",
                            "insert into AccountDetail(Tafzili,Name) values(40000,N'اداری')"})
        db.run(QString::fromUtf8(sql));
    const auto item = [this](const char *table, int code, int group, int basis, const char *title,
                             const char *cost) {
        db.run(QString("insert into %1(Code,GrpCode,CalcType,Title,Cost,Kol,Moin,Tafzili,Comment) "
                       "values(%2,%3,%4,N'%5',%6,61,1,2,N'')")
                   .arg(table)
                   .arg(code)
                   .arg(group)
                   .arg(basis)
                   .arg(QString::fromUtf8(title), cost));
    };
    item("Fiscal", 1, 1, 2, "حقوق", "1000000");
    item("Fiscal", 2, 1, 3, "مسکن", "9000");
    item("Fiscal", 3, 2, 0, "اضافه کاری", "500.25");
    item("Fiscal", 4, 2, 0, "پاداش", "0");
    item("Fiscal", 5, 2, 1, "شب کاری", "35");
    item("Deduction", 6, 5, 1, "حق بیمه", "7");
    item("Deduction", 7, 5, 0, "مالیات", "10");
    item("Deduction", 8, 6, 0, "مساعده", "300");
    item("Deduction", 9, 6, 2, "قسط وام", "25");
    bind(16, 6);
    bind(17, 7);
    db.run("insert into CalcMethod(Code,Title,Insurance,Tax) values(1,'both',1,1)");
    db.run("insert into CalcMethod(Code,Title,Insurance,Tax) values(2,'tax',0,1)");
    db.run("insert into Staff(Code) values(1)");
    db.run("insert into Recruitment(Code,StaffCode,CalcMethodCode) values(10,1,1)");
    db.run("insert into Recruitment(Code,StaffCode,CalcMethodCode) values(11,1,2)");
    db.run("insert into Recruitment(Code,StaffCode) values(12,1)");
}

EntityScreens::~EntityScreens()
{
    delete Entity_DM;
    Entity_DM = nullptr;
    UserInfo = {};
}

int EntityScreens::work(QDialog &screen, const std::function<void()> &work)
{
    return Keys::runModal([&] { return screen.exec(); },
                          [&](QWidget *) {
                              Keys::waitFor([&] { return screen.isActiveWindow(); });
                              work();
                          });
}

void EntityScreens::through(QWidget *screen, Qt::Key key, const std::function<void(QWidget *)> &work,
                            Qt::KeyboardModifiers modifiers)
{
    Keys::runModal(
        [&] {
            Keys::press(screen, key, modifiers);
            return 0;
        },
        [&](QWidget *opened) {
            Keys::waitFor([&] { return opened->isActiveWindow(); });
            work(opened);
        });
}

int EntityScreens::editNew(TSoftwarePart part, const QString &group,
                           const std::function<void(TFiscalDeducation_Get_FRM &)> &work)
{
    if (!Entity_DM)
        Entity_DM = new TEntity_DM(nullptr);
    TFiscalDeducation_Get_FRM editor(part, false, group);
    return this->work(editor, [&] { work(editor); });
}

int EntityScreens::edit(TSoftwarePart part, int code,
                        const std::function<void(TFiscalDeducation_Get_FRM &)> &work)
{
    if (!Entity_DM)
        Entity_DM = new TEntity_DM(nullptr);
    TFiscalDeducation_Get_FRM editor(part, code, fmEdit, part == cspDeduction ? 1 : 0, false, true);
    return this->work(editor, [&] { work(editor); });
}

void EntityScreens::fill(TFiscalDeducation_Get_FRM &editor, const QString &title)
{
    Keys::retype(editor.Title_EDT, title);
    Keys::retype(editor.TSelect_AccountCode1->TotalCode_EDT, "61");
    Keys::retype(editor.TSelect_AccountCode1->AssistantCode_EDT, "2");
    Keys::retype(editor.TSelect_AccountCode1->DetailCode_EDT, "1");
    if (editor.Cost_EDT->isVisible())
        Keys::retype(editor.Cost_EDT, "1500");
}

void EntityScreens::leave(TFiscalDeducation_Get_FRM &editor)
{
    messages.answer({TAnswer::No});
    Keys::press(&editor, Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
}

void EntityScreens::chooseBasis(TFiscalDeducation_Get_FRM &editor, const QString &caption)
{
    editor.CalcType_CMB->setFocus();
    Keys::press(&editor, Qt::Key_Home);
    while (editor.CalcType_CMB->currentText() != caption) {
        const int before = editor.CalcType_CMB->currentIndex();
        Keys::press(&editor, Qt::Key_Down);
        ASSERT_NE(editor.CalcType_CMB->currentIndex(), before) << caption.toStdString() << " is not offered";
    }
}

void EntityScreens::bind(int fixedItem, int userCode)
{
    db.run(QString("update PayrollInfoDetail set UserCode=%1 where ID=%2").arg(userCode).arg(fixedItem));
}

QString EntityScreens::earning(int code)
{
    return db.rows(
        QString(
            "select GrpCode,CalcType,Title,Kol,Moin,Tafzili,Cost,Insurance,Tax,Comment from Fiscal where Code=%1")
            .arg(code));
}

QString EntityScreens::deduction(int code)
{
    return db.rows(
        QString("select GrpCode,CalcType,Title,Kol,Moin,Tafzili,Cost,Comment from Deduction where Code=%1")
            .arg(code));
}

Clerk::Clerk(TestDatabase &db) : m_db(db)
{
    SeatUser(TUserInfo{7, "ali", "ali", false, true});
}

Clerk::~Clerk()
{
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
}

void Clerk::grant(int part, int right)
{
    m_db.run(QString("insert into UserRight(UserCode,SoftwarePart,Permission) values(7,%1,%2)")
                 .arg(part)
                 .arg(right));
}
