#include "host/Component_ZLM/AccountSelector_ZLM.h"

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "host/database/AnswerWait.h"

#include <QHBoxLayout>
#include <QLabel>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

const int largestTotal =
    std::numeric_limits<qint16>::max(); // the width of its column, and of the assistants'
const int typingPause = 150;            // ms

} // namespace

TSelect_AccountCode::TSelect_AccountCode(QWidget *parent) : QWidget(parent), Name_LBL(new QLabel(this))
{
    struct {
        const char *name;
        QString caption;
        int width;
        int largest;
        int digits;
    } const boxes[] = {
        {"TotalCode_EDT", u"کد کل"_s, 80, largestTotal, 5},
        {"AssistantCode_EDT", u"کد معین"_s, 80, largestTotal, 5},
        {"DetailCode_EDT", u"کد تفصیلی"_s, 120, std::numeric_limits<int>::max(), 10},
    };
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 3; ++i) {
        const auto level = TAccountLevel(i);
        auto *box = new TSmartButtonEdit_ZLM(this, boxes[i].digits);
        box->setObjectName(QString::fromLatin1(boxes[i].name));
        box->setAccessibleName(boxes[i].caption);
        box->setToolTip(boxes[i].caption + u" (F2)"_s);
        box->setPlaceholderText(boxes[i].caption);
        box->setMinimumWidth(boxes[i].width);
        box->SetRange(0, boxes[i].largest);
        connect(box, &TSmartEdit_ZLM::changed, this, &TSelect_AccountCode::typedInto);
        connect(box, &TSmartEdit_ZLM::exited, this, [this, level] { left(level); });
        connect(box, &TSmartPickEdit_ZLM::pick, this, [this, level] { pick(level); });
        row->addWidget(box);
        m_levels[i].box = box;
        m_levels[i].caption = boxes[i].caption;
    }
    TotalCode_EDT = m_levels[alTotal].box;
    AssistantCode_EDT = m_levels[alAssistant].box;
    DetailCode_EDT = m_levels[alDetail].box;
    Name_LBL->setObjectName(u"Name_LBL"_s);
    Name_LBL->setTextFormat(Qt::PlainText);
    Name_LBL->setWordWrap(true);
    Name_LBL->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    row->addWidget(Name_LBL, 1);
    setFocusProxy(TotalCode_EDT);
    m_soon.setSingleShot(true);
    m_soon.setInterval(typingPause);
    connect(&m_soon, &QTimer::timeout, this, [this] { WhenAnswered(this, [this] { Refresh(); }); });
}

void TSelect_AccountCode::EnableLevels(bool total, bool assistant, bool detail)
{
    TotalCode_EDT->setEnabled(total);
    AssistantCode_EDT->setEnabled(assistant);
    DetailCode_EDT->setEnabled(detail);
}

void TSelect_AccountCode::SetDetailLimit(int largest)
{
    DetailCode_EDT->SetRange(0, largest);
    DetailCode_EDT->SetMaxLength(int(QString::number(largest).size()));
}

void TSelect_AccountCode::Clear()
{
    SetCodes({}, {}, {});
}

void TSelect_AccountCode::SetCodes(const QString &total, const QString &assistant, const QString &detail)
{
    const QString codes[] = {total, assistant, detail};
    for (int i = 0; i < 3; ++i)
        m_levels[i].box->SetText(codes[i] == u"0" ? QString() : codes[i]);
    Refresh();
}

TAccountCode TSelect_AccountCode::typed() const
{
    return {TotalCode_EDT->asInteger(), AssistantCode_EDT->asInteger(), DetailCode_EDT->asInteger()};
}

void TSelect_AccountCode::Refresh()
{
    m_soon.stop();
    m_stale = false;
    const TAccountCode account = typed();
    const int codes[] = {account.Kol, account.Moin, account.Tafzili};
    QStringList shown;
    bool anyMissing = false;
    try {
        for (int i = 0; i < 3; ++i) {
            TLevel &level = m_levels[i];
            level.name.clear();
            level.missing = false;
            if (codes[i] == 0)
                continue;
            const auto name = AccountName(TAccountLevel(i), account);
            level.missing = !name;
            level.name = name.value_or(QString());
            anyMissing = anyMissing || level.missing;
            shown << (level.missing ? missingText(TAccountLevel(i)) : level.name);
        }
    } catch (const TDatabaseError &error) {
        for (TLevel &level : m_levels)
            level.missing = false;
        shown = {error.userText()};
        anyMissing = true;
        m_stale = true; // asked again when the codes are needed
    }
    QPalette palette = this->palette();
    if (anyMissing)
        palette.setColor(QPalette::WindowText, QColor(0x80, 0, 0));
    Name_LBL->setPalette(palette);
    Name_LBL->setText(shown.join(u" / "_s));
    Name_LBL->setToolTip(Name_LBL->text());
}

int TSelect_AccountCode::code(TAccountLevel level)
{
    if (m_stale)
        Refresh();
    return m_levels[level].missing ? 0 : m_levels[level].box->asInteger();
}

QString TSelect_AccountCode::missingText(TAccountLevel level) const
{
    return u"%1 %2 ثبت نشده است"_s.arg(m_levels[level].caption, m_levels[level].box->GetText());
}

void TSelect_AccountCode::typedInto()
{
    m_stale = true;
    m_soon.start();
    Q_EMIT changed();
}

void TSelect_AccountCode::left(TAccountLevel level)
{
    if (m_stale)
        Refresh();
    if (m_levels[level].missing)
        ShowTooltipMessage(missingText(level), m_levels[level].box);
}

void TSelect_AccountCode::pick(TAccountLevel level)
{
    TAccountCode account = typed();
    const TAccountCode before = account;
    if (!Select_Account(level, account))
        return;
    if (account.Kol != before.Kol)
        TotalCode_EDT->SetValue(account.Kol);
    if (account.Moin != before.Moin)
        AssistantCode_EDT->SetValue(account.Moin);
    if (account.Tafzili != before.Tafzili)
        DetailCode_EDT->SetValue(account.Tafzili);
    Refresh();
    m_levels[level].box->setFocus(Qt::OtherFocusReason);
    m_levels[level].box->selectAll();
}
