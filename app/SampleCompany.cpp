#include "SampleCompany.h"

#include "SampleCompanyData.h"
#include "calender/CalenderDays.h"
#include "calender/Calender_DM_UNT.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/database/Transaction.h"
#include "tax/Tax_DM_UNT.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSet>

#include <random>

namespace {

using namespace SampleData;

struct TColumn {
    const char *name;
    QVariant value;
};

/// The same throws on every machine: the engine's sequence is standardized, that of <random>'s distributions is not.
class TDice {
public:
    int roll(int from, int to) { return from + int(m_engine() % unsigned(to - from + 1)); }
    template <class T, size_t N>
    const T &pick(const T (&list)[N])
    {
        return list[roll(0, N - 1)];
    }
    QString digits(int count)
    {
        QString text;
        while (text.size() < count)
            text += QChar('0' + roll(0, 9));
        return text;
    }
    TPersianDate date(int fromYear, int toYear)
    {
        const int year = roll(fromYear, toYear);
        const int month = roll(1, 12);
        return {year, month, roll(1, TPersianDate::daysInMonth(year, month))};
    }

private:
    std::mt19937 m_engine{1404};
};

class TFiller {
public:
    explicit TFiller(TConnection &connection) : m_connection(connection) {}
    void fill()
    {
        settingsAndAccounts();
        taxTables();
        calculationMethods();
        items();
        fixedItems();
        for (int code = 1; code <= employees; ++code)
            employee(code);
        outputs();
        workstations();
        calendar(1404);
        calendar(1405);
    }

private:
    static constexpr int employees = 200;
    static constexpr int friday = 6;

    void insert(const char *table, std::initializer_list<TColumn> row)
    {
        TStatement statement(QString("insert into %1(").arg(table));
        TStatement values;
        for (const TColumn &column : row) {
            const char *comma = values.isEmpty() ? "" : ",";
            statement.sql(QString("%1[%2]").arg(comma, column.name));
            values.sql(comma).value(column.value);
        }
        m_connection.execute(statement.sql(") values(").append(values).sql(")"));
    }
    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    template <size_t N>
    void insertNamed(const char *table, const char *key, const TNamed (&rows)[N])
    {
        for (const TNamed &row : rows)
            insert(table, {{key, row.code}, {"Name", text(row.name)}});
    }

    void settingsAndAccounts()
    {
        int code = 6;
        for (const char *setting : settings)
            m_connection.execute(TStatement("update PayrollInfo set Value=")
                                     .text(text(setting))
                                     .sql(" where Code=")
                                     .integer(code++));
        insertNamed("StaffGroup", "Code", staffGroups);
        insertNamed("PersonGroup", "Code", personGroups);
        insertNamed("FiscalGrp", "Code", fiscalGroups);
        insertNamed("DeductionGrp", "Code", deductionGroups);
        insertNamed("AccountTotal", "Kol", totals);
        for (const TAssistant &row : assistants)
            insert("AccountAssistant", {{"Kol", row.total}, {"Moin", row.code}, {"Name", text(row.name)}});
        insertNamed("AccountDetail", "Tafzili", details);
    }

    void require(bool written) const
    {
        if (!written)
            throw m_connection.lastError().value();
    }

    template <size_t N>
    void taxTable(TTax_DM &tax, int code, int year, const TBracket (&brackets)[N])
    {
        require(tax.Tax_Insert({code, text("جدول مالیات حقوق سال %1").arg(year),
                                text("قانون بودجه سال %1 ، مبالغ سالانه به ریال").arg(year)}));
        double from = 0;
        for (const TBracket &bracket : brackets) {
            require(tax.TmpTax_Insert({code, from, bracket.upTo, bracket.percent,
                                       bracket.percent == 0 ? text("معاف از مالیات") : QString("")}));
            from = bracket.upTo + 1;
        }
        require(tax.TaxDetail_Insert(code));
        tax.ClearDataTempDetail(code);
    }

    /// As the editor enters them: into the working rows, from there to the tax table.
    void taxTables()
    {
        const QScopedValueRollback connection(DM.ADOConnection1, &m_connection);
        TTax_DM tax(nullptr);
        taxTable(tax, 1, 1403, tax1403);
        taxTable(tax, 2, 1404, tax1404);
    }

    void method(int code, const char *title, int taxTable, bool insurance, bool tax, int rounding)
    {
        insert("CalcMethod", {{"Code", code},
                              {"Title", text(title)},
                              {"StaffIns", insurance ? 7.0 : 0.0},
                              {"EmployerIns", insurance ? 20.0 : 0.0},
                              {"DailyIns", 24245592.0},
                              {"OverTime", 120},
                              {"TaxMainCode", taxTable},
                              {"DecTax", true},
                              {"Maskok", rounding},
                              {"LeaveCeil", 2.5},
                              {"OutPut", 7.33},
                              {"Comment", ""},
                              {"Insurance", insurance},
                              {"Tax", tax},
                              {"BedBes", true},
                              {"Loan", true},
                              {"OverDis", code == 2},
                              {"Entrance", "08:00"},
                              {"Exit", "16:00"}});
    }

    void calculationMethods()
    {
        method(1, "کارکنان رسمی و قراردادی", 2, true, true, 3);
        method(2, "کارکنان ساعتی", 2, true, false, 3);
        method(3, "مشاوران", 2, false, true, 3);
        method(4, "کارآموزان", 1, false, false, 0);
    }

    void items()
    {
        for (const TItem &item : earnings)
            insertItem("Fiscal", item);
        for (const TItem &item : deductions)
            insertItem("Deduction", item);
    }

    void insertItem(const char *table, const TItem &item)
    {
        insert(table, {{"Code", item.code},
                       {"GrpCode", item.group},
                       {"CalcType", item.basis},
                       {"Title", text(item.title)},
                       {"Kol", item.total},
                       {"Moin", item.assistant},
                       {"Tafzili", item.detail},
                       {"Cost", item.cost},
                       {"Comment", ""}});
        if (qstrcmp(table, "Fiscal") == 0)
            m_connection.execute(TStatement("update Fiscal set Insurance=")
                                     .value(item.insurance)
                                     .sql(",Tax=")
                                     .value(item.tax)
                                     .sql(" where Code=")
                                     .integer(item.code));
    }

    /// The fixed items of the settings bear the titles of the items that stand for them.
    void fixedItems()
    {
        for (const TItem &item : earnings)
            linkFixedItem(0, item);
        for (const TItem &item : deductions)
            linkFixedItem(1, item);
    }

    void linkFixedItem(int type, const TItem &item)
    {
        m_connection.execute(TStatement("update PayrollInfoDetail set UserCode=")
                                 .integer(item.code)
                                 .sql(" where Type=")
                                 .integer(type)
                                 .sql(" and Title=")
                                 .text(text(item.title)));
    }

    QString nationalCode()
    {
        for (;;) {
            const QString nine = '0' + m_dice.digits(8);
            int sum = 0;
            for (int i = 0; i < 9; ++i)
                sum += nine[i].digitValue() * (10 - i);
            const int rest = sum % 11;
            QString code = nine + QString::number(rest < 2 ? rest : 11 - rest);
            if (code.count(code[0]) < 10 && !m_nationalCodes.contains(code)) {
                m_nationalCodes.insert(code);
                return code;
            }
        }
    }

    /// A full name that no employee has yet.
    std::pair<QString, QString> fullName(bool woman)
    {
        for (;;) {
            const QString first = text(woman ? m_dice.pick(womenNames) : m_dice.pick(menNames));
            const QString last = text(m_dice.pick(familyNames));
            const QString whole = first + ' ' + last;
            if (!m_fullNames.contains(whole)) {
                m_fullNames.insert(whole);
                return {first, last};
            }
        }
    }

    /// A passport picture's silhouette.
    static QByteArray photograph(bool woman, int hue)
    {
        QImage image(90, 120, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(hue, 40, 235));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromHsv(hue, 110, 110));
        painter.drawEllipse(QRectF(8, 82, 74, 80));
        if (woman)
            painter.drawEllipse(QRectF(22, 20, 46, 70));
        painter.setBrush(QColor(236, 204, 178));
        painter.drawEllipse(QRectF(28, 28, 34, 44));
        painter.end();
        QByteArray jpeg;
        QBuffer buffer(&jpeg);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG", 80);
        return jpeg;
    }

    void employee(int code)
    {
        // Most work in production; every eighth one has left.
        static const int groups[] = {1, 2, 2, 3, 3, 3, 3, 4, 5, 6};
        const int group = code <= 4 ? 1 : m_dice.pick(groups);
        const TWork &work = works[group - 1];
        const bool woman = m_dice.roll(1, 10) <= 4;
        const auto [name, lastName] = fullName(woman);
        const TPersianDate birth = m_dice.date(1345, 1379);
        const TPersianDate employed = m_dice.date(qMax(birth.year + 22, 1388), 1403);
        const bool left = code % 8 == 0;
        const bool married = m_dice.roll(1, 10) <= 7;
        const QString city = text(m_dice.pick(cities));
        insert(
            "Staff",
            {{"Code", code},
             {"StaffGroup", group},
             {"PersonnelCode", QString::number(1000 + code)},
             {"InsuranceNumber", QString("00%1%2").arg(m_dice.digits(5)).arg(code, 3, 10, QChar('0'))},
             {"CardNumber", QString::number(code)},
             {"NationalID", nationalCode()},
             {"Sex", woman},
             {"FatherName", text(m_dice.pick(menNames))},
             {"IDNumber", QString::number(m_dice.roll(1, 9999))},
             {"BirthDate", birth.toText()},
             {"BirthPlace", city},
             {"Department", text(work.department)},
             {"Degree", qMin(work.degree + m_dice.roll(0, 1), 7)},
             {"Major", text(work.major)},
             {"Military", woman ? 6 : m_dice.roll(0, 2)},
             {"IsMarried", married},
             {"Picture", photograph(woman, code * 37 % 360)},
             {"AccountNumber", m_dice.digits(13)},
             {"BankTitle", text(m_dice.pick(banks))},
             {"CoDate", employed.toText()},
             {"Job", text(work.job)},
             {"Comment", ""},
             {"Name", name},
             {"LastName", lastName},
             {"Tel1", "021" + QString::number(m_dice.roll(2, 8)) + m_dice.digits(7)},
             {"Tel2", ""},
             {"Fax", ""},
             {"Mob", "0912" + m_dice.digits(7)},
             {"Add1", text("%1، %2، پلاک %3").arg(city, text(m_dice.pick(streets))).arg(m_dice.roll(1, 250))},
             {"Add2", ""},
             {"Email", QString("staff%1@example.ir").arg(code)},
             {"LeaveDate", left ? m_dice.date(1404, 1404).toText() : QString("")},
             {"Employment", group == 1 ? 2 : 4},
             {"PostCode", QString::number(m_dice.roll(1, 9)) + m_dice.digits(9)},
             {"Category", work.category},
             {"FiscalExemption", code % 50 == 0 ? 3 : 0},
             {"National", code % 67 == 0 ? 1 : 0},
             {"Insurance", 1},
             {"IssuePlace", city},
             {"IssueDate", birth.addDays(m_dice.roll(1, 15)).toText()},
             {"JobCode", text(work.jobCode)},
             {"JobGroup", text(work.department)},
             {"CreatedTime", "08:30"},
             {"CreatedDate", "1404/01/16"},
             {"UserCreated", text("مدیر سیستم (1)")}});
        if (married)
            family(code, woman, lastName, birth, employed);
        // The first order of each; a few are without a method still.
        insert("Recruitment",
               {{"Code", code},
                {"StaffCode", code},
                {"DoDate", employed.addDays(m_dice.roll(0, 10)).toText()},
                {"CalcMethodCode", code % 25 == 0 ? QVariant() : QVariant(methodOf(code, group))}});
        insert("tmpstaffFiscal", {{"ItemCode", earnings[m_dice.roll(0, 6)].code}});
        if (code % 5 == 0)
            insert("tmpstaffdeduction", {{"ItemCode", deductions[m_dice.roll(2, 4)].code}});
        if (code % 10 == 0)
            insert("tmpsalarybilldetail", {{"itemcode", 1 + m_dice.roll(0, 3)}});
    }

    static int methodOf(int code, int group)
    {
        return code % 40 == 7 ? 4 : group == 6 ? 2 : code % 30 == 3 ? 3 : 1;
    }

    void family(int staffCode, bool woman, const QString &lastName, TPersianDate birth, TPersianDate employed)
    {
        const int spouseBirth = qMin(birth.year + m_dice.roll(-3, 5), 1383);
        const bool spouseDied = staffCode % 45 == 0;
        member(staffCode, 2,
               text(woman ? m_dice.pick(menNames) : m_dice.pick(womenNames)) + ' ' +
                   text(m_dice.pick(familyNames)),
               !woman, m_dice.date(spouseBirth, spouseBirth),
               spouseDied ? m_dice.date(1401, 1403).toText() : QString(""));
        const int firstChild = qMax(qMax(birth.year, spouseBirth) + 24, employed.year - 5);
        for (int year = firstChild, child = m_dice.roll(0, 3); child > 0 && year <= 1403; --child) {
            const bool daughter = m_dice.roll(0, 1) == 1;
            const QString name = text(daughter ? m_dice.pick(womenNames) : m_dice.pick(menNames));
            // Children carry their father's family name.
            const QString childsLastName = woman ? text(m_dice.pick(familyNames)) : lastName;
            member(staffCode, 1, name + ' ' + childsLastName, daughter, m_dice.date(year, year), "");
            year += m_dice.roll(2, 5);
        }
    }

    void member(int staffCode, int kinship, const QString &name, bool woman, TPersianDate birth,
                const QString &death)
    {
        insert("StaffFamily", {{"ID", ++m_members},
                               {"StaffCode", staffCode},
                               {"Type", kinship},
                               {"Name", name},
                               {"Sex", woman},
                               {"InsuranceNumber", "00" + m_dice.digits(8)},
                               {"BirthDate", birth.toText()},
                               {"Death", !death.isEmpty()},
                               {"DeathDate", death},
                               {"Comment", ""}});
    }

    void outputs()
    {
        // Two orders under edit hold items already, so that a second pick meets them.
        for (const TItem &item : {earnings[0], earnings[2], earnings[3]})
            insert("tmpRecFiscal", {{"RecruitmentCode", 1}, {"ItemCode", item.code}, {"Cost", item.cost}});
        insert("tmpRecDeduction", {{"Recruitmentcode", 1}, {"ItemCode", 23}, {"Cost", 3500000.0}});
        insert("tmpRecFiscal", {{"RecruitmentCode", 2}, {"ItemCode", 11}, {"Cost", 15000000.0}});
        static const TNamed monthly[] = {
            {1, "کارکرد فروردین 1404"}, {2, "کارکرد اردیبهشت 1404"}, {3, "کارکرد خرداد 1404"}};
        for (const TNamed &output : monthly)
            insert("StaffOutPut", {{"Code", output.code}, {"Title", text(output.name)}});
        insert("tmpstaffOutPutDetail", {{"OutPutCode", 1}, {"Amount", 20.0}, {"Type", 0}, {"ItemCode", 7}});
        insert("tmpstaffOutPutDetail", {{"OutPutCode", 1}, {"Amount", 3.0}, {"Type", 1}, {"ItemCode", 25}});
    }

    void workstations()
    {
        static const TNamed others[] = {{2, "کارگزینی"}, {3, "امور مالی"}};
        for (const TNamed &other : others)
            insert("Workstation",
                   {{"Com_Index", other.code}, {"Name", text(other.name)}, {"LastSeen", "1404/12/20 08:10"}});
    }

    /// As the generator makes it, from the year's real first weekday.
    void calendar(int year)
    {
        const QScopedValueRollback connection(DM.ADOConnection1, &m_connection);
        TCalender_DM calender(nullptr);
        const QList<TCalenderMapper> days = CalenderDays::of(
            {year, 1, 1, year, 12, TPersianDate::daysInMonth(year, 12), TPersianDate{year, 1, 1}.weekday(),
             friday, text("تقویم کاری %1").arg(year), QString("")});
        for (const TCalenderMapper &day : days)
            require(calender.Calender_Insert(day));
    }

    TConnection &m_connection;
    TDice m_dice;
    QSet<QString> m_nationalCodes;
    QSet<QString> m_fullNames;
    int m_members = 0;
};

} // namespace

void FillSampleCompany(TConnection &connection)
{
    TTransaction transaction(connection);
    TFiller(connection).fill();
    transaction.commit();
}
