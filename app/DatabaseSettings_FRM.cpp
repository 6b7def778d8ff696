#include "app/DatabaseSettings_FRM.h"

#include "app/Ask.h"
#include "host/Component_ZLM/FileDialogs.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/database/Engine.h"
#include "host/database/OdbcConnectionString.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

void addInput(QGridLayout *grid, QWidget *input, const QString &caption, const char *name)
{
    input->setObjectName(QLatin1String(name));
    input->setAccessibleName(QString(caption).remove(u'&').trimmed());
    auto *label = new QLabel(caption);
    label->setBuddy(input);
    const int row = grid->isEmpty() ? 0 : grid->rowCount();
    grid->addWidget(label, row, 0);
    grid->addWidget(input, row, 1);
}

QLineEdit *addLine(QGridLayout *grid, const QString &caption, const char *name)
{
    auto *edit = new QLineEdit;
    addInput(grid, edit, caption, name);
    // Servers, users and paths are Latin nearly always.
    edit->setLayoutDirection(Qt::LeftToRight);
    return edit;
}

/// What each kind of line means, in the order of the list.
const QString privacyHints[] = {
    u"کسی روی شبکه چیزی نمی خواند و سرور همان است که باید باشد."_s,
    u"کسی روی شبکه چیزی نمی خواند، اما سروری دیگر می تواند خود را به جای آن بگذارد."_s,
    u"حقوق، کد ملی و نشانی افراد روی شبکه خوانده می شود."_s};

} // namespace

TDatabaseSettings_FRM::TDatabaseSettings_FRM(const TDatabaseChoice &choice)
{
    SetTitle(u"تنظیمات پایگاه داده"_s);
    File_RB = new QRadioButton(u"&پرونده ای روی این رایانه"_s, this);
    File_RB->setObjectName(u"File_RB"_s);
    Server_RB = new QRadioButton(u"&سرور SQL Server"_s, this);
    Server_RB->setObjectName(u"Server_RB"_s);

    m_fileBox = new QWidget(this);
    auto *fileGrid = new QGridLayout(m_fileBox);
    File_EDT = addLine(fileGrid, u"  &نام پرونده :"_s, "File_EDT");
    auto *pick = new TSmartButton_ZLM(u"انتخاب ..."_s, this);
    pick->setObjectName(u"Pick_BTN"_s);
    fileGrid->addWidget(pick, 0, 2);
    connect(pick, &QAbstractButton::clicked, this, &TDatabaseSettings_FRM::pickFile);

    m_serverBox = new QWidget(this);
    auto *serverGrid = new QGridLayout(m_serverBox);
    Server_EDT = addLine(serverGrid, u"  نام س&رور :"_s, "Server_EDT");
    Port_EDT = addLine(serverGrid, u"  &درگاه :"_s, "Port_EDT");
    Database_EDT = addLine(serverGrid, u"  پایگاه &داده :"_s, "Database_EDT");
    User_EDT = addLine(serverGrid, u"  &کاربر :"_s, "User_EDT");
    Password_EDT = addLine(serverGrid, u"  &گذرواژه :"_s, "Password_EDT");
    Password_EDT->setEchoMode(QLineEdit::Password);
    Password_EDT->setPlaceholderText(u"نگهداری نمی شود؛ در هر شروع پرسیده می شود"_s);
    Driver_EDT = addLine(serverGrid, u"  راه &انداز ODBC :"_s, "Driver_EDT");
    Partner_EDT = addLine(serverGrid, u"  سرور &جانشین :"_s, "Partner_EDT");
    Privacy_CB = new TSmartComboBox_ZLM(this, {PrivacyText(TLinePrivacy::Checked),
                                               PrivacyText(TLinePrivacy::Unchecked),
                                               PrivacyText(TLinePrivacy::Readable)});
    addInput(serverGrid, Privacy_CB, u"  ار&تباط :"_s, "Privacy_CB");
    m_privacyHint = new QLabel(this);
    m_privacyHint->setObjectName(u"Privacy_LBL"_s);
    m_privacyHint->setWordWrap(true);
    serverGrid->addWidget(m_privacyHint, serverGrid->rowCount(), 1);
    Authorities_EDT = addLine(serverGrid, u"  پرونده &صادرکنندگان گواهی :"_s, "Authorities_EDT");
    Authorities_EDT->setPlaceholderText(u"گواهی های سیستم"_s);

    Body()->addWidget(File_RB);
    Body()->addWidget(m_fileBox);
    Body()->addWidget(Server_RB);
    Body()->addWidget(m_serverBox);
    Body()->addStretch(1);

    TSmartButton_ZLM *save = AddButton(u"Save_BTN"_s, u"ذخیره F3"_s, u"F3"_s);
    connect(save, &QAbstractButton::clicked, this, &TDatabaseSettings_FRM::save);
    TSmartButton_ZLM *testing = AddButton(u"Test_BTN"_s, u"آزمایش اتصال F8"_s, u"F8"_s);
    connect(testing, &QAbstractButton::clicked, this, &TDatabaseSettings_FRM::test);
    TSmartButton_ZLM *exit = AddButton(u"EXit_BTN"_s, u"خروج Esc"_s, u"Esc"_s);
    connect(exit, &QAbstractButton::clicked, this, &TDatabaseSettings_FRM::reject);

    const TOdbcConnectionString odbc(choice.odbc);
    const auto partOf = [&odbc](const char *name) { return odbc.value(QLatin1String(name)); };
    File_EDT->setText(choice.file.isEmpty() ? TDatabaseChoice::ordinaryFile() : choice.file);
    Driver_EDT->setText(choice.onServer() ? partOf("Driver") : u"FreeTDS"_s);
    Server_EDT->setText(partOf("Server"));
    Port_EDT->setText(choice.onServer() ? partOf("Port") : u"1433"_s);
    Database_EDT->setText(partOf("Database"));
    User_EDT->setText(partOf("UID"));
    Partner_EDT->setText(partOf("Failover_Partner"));
    Authorities_EDT->setText(odbc.authorities());
    Privacy_CB->setCurrentIndex(int(odbc.privacy()));
    m_encryptsStrictly = partOf("Encrypt").compare("strict"_L1, Qt::CaseInsensitive) == 0;
    m_otherParts = odbc.without({"Driver", "Server", "Port", "Database", "UID", "PWD", "Password",
                                 "Failover_Partner", "CAFile", "Encrypt", "TrustServerCertificate"})
                       .text();
    if (m_otherParts.isEmpty())
        m_otherParts = u"TDS_Version=7.4;ClientCharset=UTF-8"_s;
    (choice.onServer() ? Server_RB : File_RB)->setChecked(true);
    connect(File_RB, &QRadioButton::toggled, this, &TDatabaseSettings_FRM::showKind);
    connect(Privacy_CB, &QComboBox::currentIndexChanged, this, &TDatabaseSettings_FRM::showPrivacy);
    showKind();
    showPrivacy();
    resize(620, 520);
}

void TDatabaseSettings_FRM::showKind()
{
    m_fileBox->setEnabled(File_RB->isChecked());
    m_serverBox->setEnabled(Server_RB->isChecked());
}

void TDatabaseSettings_FRM::showPrivacy()
{
    m_privacyHint->setText(privacyHints[qMax(Privacy_CB->currentIndex(), 0)]);
    Authorities_EDT->setEnabled(Privacy_CB->currentIndex() == int(TLinePrivacy::Checked));
}

TDatabaseChoice TDatabaseSettings_FRM::Choice() const
{
    TDatabaseChoice choice;
    choice.file = File_EDT->text().trimmed();
    if (choice.file == TDatabaseChoice::ordinaryFile())
        choice.missing = TConnection::Missing::Create;
    if (!Server_RB->isChecked())
        return choice;
    const QList<std::pair<QString, QString>> given = {
        {"Driver", Driver_EDT->text()},     {"Server", Server_EDT->text()},
        {"Port", Port_EDT->text()},         {"Database", Database_EDT->text()},
        {"UID", User_EDT->text()},          {"Failover_Partner", Partner_EDT->text()},
        {"CAFile", Authorities_EDT->text()}};
    TOdbcConnectionString odbc({});
    for (const auto &[name, value] : given) {
        if (!value.trimmed().isEmpty())
            odbc = odbc.with(name, value.trimmed());
    }
    const auto privacy = TLinePrivacy(qMax(Privacy_CB->currentIndex(), 0));
    if (privacy == TLinePrivacy::Readable)
        odbc = odbc.with(u"Encrypt"_s, u"no"_s);
    else
        odbc = odbc.with(u"Encrypt"_s, m_encryptsStrictly ? u"strict"_s : u"yes"_s);
    if (privacy == TLinePrivacy::Unchecked)
        odbc = odbc.with(u"TrustServerCertificate"_s, u"yes"_s);
    odbc = TOdbcConnectionString(odbc.text() + u';' + m_otherParts);
    if (!Password_EDT->text().isEmpty())
        odbc = odbc.with(u"PWD"_s, Password_EDT->text());
    choice.odbc = odbc.text();
    return choice;
}

bool TDatabaseSettings_FRM::isComplete()
{
    QLineEdit *missing = nullptr;
    if (File_RB->isChecked() && File_EDT->text().trimmed().isEmpty())
        missing = File_EDT;
    for (QLineEdit *input : {Server_EDT, Database_EDT, Driver_EDT}) {
        if (Server_RB->isChecked() && input->text().trimmed().isEmpty() && !missing)
            missing = input;
    }
    if (!missing)
        return true;
    MsgRequiredField(missing->accessibleName().remove(u':').trimmed(), missing, this);
    missing->setFocus();
    return false;
}

void TDatabaseSettings_FRM::test()
{
    if (!isComplete())
        return;
    const TDatabaseChoice choice = Choice();
    if (!choice.onServer() && !QFileInfo::exists(choice.file)) {
        Tell(u"چنین پرونده ای هنوز نیست؛ هنگام شروع پرسیده می شود که ساخته شود یا نه."_s);
        return;
    }
    // An engine alone leaves the schema as it is.
    TLineState line;
    const bool open = Guarded([&] {
        line = (choice.onServer() ? OpenOdbcEngine(choice.odbc) : OpenSqliteEngine(choice.file))->line();
    });
    if (open)
        Tell(u"اتصال به پایگاه داده برقرار شد."_s +
             (line.toServer ? u"\nسرور: \u2066%1\u2069 (%2)"_s.arg(line.server, PrivacyText(line.privacy))
                            : QString()));
}

void TDatabaseSettings_FRM::save()
{
    if (!isComplete())
        return;
    if (Choice().store())
        accept();
    else
        Tell(u"تنظیمات ذخیره نشد؛ پوشه تنظیمات کاربر قابل نوشتن نیست."_s, miError);
}

void TDatabaseSettings_FRM::pickFile()
{
    // The file may be the one that is open, and it may be none yet.
    const QString file = FileDialogs::AskForName(
        this,
        {.caption = u"پرونده پایگاه داده"_s, .filter = u"پایگاه داده (*.db)"_s, .name = File_EDT->text()});
    if (!file.isEmpty())
        File_EDT->setText(file);
}
