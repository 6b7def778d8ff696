#include "tax/TaxScreens.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

using namespace Qt::Literals::StringLiterals;

TaxScreens::TaxScreens()
{
    IniOptions.Com_Index = 1;
    SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    Tax_DM = new TTax_DM(nullptr);
}

TaxScreens::~TaxScreens()
{
    EXPECT_EQ(messages.unansweredQuestions(), 0);
    delete Tax_DM;
    Tax_DM = nullptr;
    UserInfo = {};
}

void TaxScreens::table(int code, const QString &title, const QString &brackets)
{
    db.run(u"insert into TaxMain(Code, Title, Comment) values(%1, '%2', 'c')"_s.arg(code).arg(title));
    for (const QString &line : brackets.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList cells = line.split(u'|');
        db.run(
            u"insert into Tax(TaxMainCode, FromSalary, ToSalary, [Percent], Comment) values(%1, %2, %3, %4, 'b')"_s
                .arg(code)
                .arg(cells[0], cells[1], cells[2]));
    }
}

int TaxScreens::edit(int code, const std::function<void(TTaxGet_FRM &)> &work)
{
    const std::unique_ptr<TTaxGet_FRM> editor(code == 0 ? new TTaxGet_FRM(cspTax, false, QString())
                                                        : new TTaxGet_FRM(cspTax, code, fmEdit, false));
    return Keys::runModal([&] { return editor->exec(); },
                          [&](QWidget *) {
                              Keys::waitFor([&] { return editor->isActiveWindow(); });
                              work(*editor);
                          });
}

TSmartGrid_ZLM *TaxScreens::grid(TTaxGet_FRM &editor)
{
    return Keys::find<TSmartGrid_ZLM>(&editor, u"TaxDetail_List_GRD"_s);
}

void TaxScreens::inBracket(TTaxGet_FRM &editor, Qt::Key key, Qt::KeyboardModifiers modifiers,
                           const std::function<void(TTax_GetDetail_FRM &)> &work)
{
    grid(editor)->setFocus();
    Keys::runModal(
        [&] {
            Keys::press(&editor, key, modifiers);
            return 0;
        },
        [&](QWidget *screen) {
            auto *bracket = qobject_cast<TTax_GetDetail_FRM *>(screen);
            ASSERT_NE(bracket, nullptr);
            Keys::waitFor([&] { return bracket->isActiveWindow(); });
            work(*bracket);
        });
    editor.activateWindow();
    Keys::waitFor([&] { return editor.isActiveWindow(); });
}

void TaxScreens::fill(TTax_GetDetail_FRM &screen, const TypedBracket &bracket)
{
    Keys::retype(screen.FromSalary_EDT, bracket.from);
    Keys::retype(screen.ToSalary_EDT, bracket.to);
    Keys::retype(screen.Percent_EDT, bracket.percent);
    Keys::retype(screen.Comment_EDT, bracket.comment);
}

void TaxScreens::add(TTaxGet_FRM &editor, const TypedBracket &bracket)
{
    inBracket(editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TTax_GetDetail_FRM &screen) {
        fill(screen, bracket);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible())
            << bracket.from.toStdString() << messages.take().join(u' ').toStdString();
    });
}

QString TaxScreens::shown(TTaxGet_FRM &editor)
{
    const QAbstractItemModel *model = grid(editor)->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data().toString();
        lines << cells.join(u'|');
    }
    return lines.join(u'\n');
}

QString TaxScreens::permanent(int code)
{
    return db.rows(
        u"select FromSalary, ToSalary, [Percent] from Tax where TaxMainCode=%1 order by FromSalary"_s.arg(
            code));
}

QString TaxScreens::working()
{
    return db.rows(
        u"select TaxMainCode, FromSalary, ToSalary, [Percent] from TmpTax order by TaxMainCode, FromSalary"_s);
}
