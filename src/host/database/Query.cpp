#include "host/database/Query.h"

#include "host/Utility_ZLM/PersianText.h"
#include "host/database/QueryRows.h"
#include "host/database/RowWriter.h"
#include "host/database/RowsToCome.h"

using namespace Qt::Literals::StringLiterals;

struct TQuery::Private {
    TConnection *connection = nullptr;
    TStatement statement;
    QVariantMap params;
    QString keyField;
    QString orderField;
    Qt::SortOrder order = Qt::AscendingOrder;
    std::shared_ptr<TQueryRows> rows; // null while the query is closed
    std::unique_ptr<TRowsToCome> toCome;
    QString describedText; // a list that is filtered anew has the columns that it had
    TQueryRows::TColumns described;
    State state = State::Inactive;
    int position = -1;
    bool eof = true;
    RowWriter::TRow edited;

    bool editing() const { return state == State::Edit || state == State::Insert; }
    std::unique_ptr<TQueryRows> read()
    {
        rememberFields();
        return std::make_unique<TQueryRows>(
            TQueryRows::TSource{connection, statement, params, keyField, orderField, order, knownColumns()});
    }
    TQueryRows::TColumns knownColumns() const
    {
        if (describedText == statement.boundText())
            return described;
        const QList<TFieldInfo> *columns =
            keyField.isEmpty() ? nullptr : connection->engine().columnsOf(statement.boundText());
        return columns ? TQueryRows::TColumns::of(*columns) : TQueryRows::TColumns();
    }
    void rememberFields()
    {
        if (!rows || rows->knownColumns().fields.isEmpty())
            return;
        describedText = statement.boundText();
        described = rows->knownColumns();
    }
    void take(std::unique_ptr<TQueryRows> read, int row)
    {
        rows = std::move(read);
        toCome.reset();
        state = State::Browse;
        eof = rows->count() == 0;
        position = eof ? -1 : row;
    }
    TQueryRows &open() const
    {
        if (!rows)
            throw TDatabaseError(TFault::BadStatement, u"the query is closed"_s, statement.boundText());
        return *rows;
    }
    int index(const QString &field) const
    {
        const int found = open().fieldIndex(field);
        if (found < 0)
            throw TDatabaseError(TFault::BadStatement, u"no such column: "_s + field, statement.boundText());
        return found;
    }
    void beginEdit(State next)
    {
        edited.fields = open().fields();
        edited.original = next == State::Edit ? rows->row(position) : QVariantList();
        edited.values = edited.original;
        edited.values.resize(edited.fields.size());
        edited.changed = QList<bool>(edited.fields.size(), false);
        state = next;
    }
};

TQuery::TQuery(TConnection *connection, const QString &name, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>())
{
    d->connection = connection;
    setObjectName(name);
}

TQuery::~TQuery() = default;

void TQuery::setStatement(const TStatement &statement)
{
    close();
    d->statement = statement;
}

const TStatement &TQuery::statement() const
{
    return d->statement;
}

void TQuery::setParam(const QString &name, const QVariant &value)
{
    d->params.insert(name.toLower(), value);
}

void TQuery::setKeyField(const QString &keyField)
{
    d->keyField = keyField;
}

const QString &TQuery::keyField() const
{
    return d->keyField;
}

void TQuery::setOrder(const QString &field, Qt::SortOrder order)
{
    d->orderField = field;
    d->order = order;
    if (active())
        open();
}

void TQuery::open()
{
    d->take(d->read(), 0); // a failure leaves the query as it was
    Q_EMIT opened();
    Q_EMIT currentChanged(d->position);
}

void TQuery::openAt(const std::optional<qlonglong> &key)
{
    auto rows = d->read();
    const int found = key && rows->windowed() ? rows->rowOfKey(*key) : -1;
    const int row = found < 0 ? rows->count() - 1 : found;
    d->take(std::move(rows), row);
    Q_EMIT opened();
    Q_EMIT currentChanged(d->position);
}

void TQuery::close()
{
    if (!active())
        return;
    d->rememberFields();
    d->rows.reset();
    d->toCome.reset();
    d->state = State::Inactive;
    d->position = -1;
    d->eof = true;
    Q_EMIT closed();
}

bool TQuery::active() const
{
    return d->rows != nullptr;
}

TQuery::State TQuery::state() const
{
    return d->state;
}

int TQuery::recordCount() const
{
    return d->rows ? d->rows->count() : 0;
}

int TQuery::position() const
{
    return d->position;
}

void TQuery::moveTo(int position)
{
    if (d->editing())
        cancel();
    const int target = isEmpty() ? -1 : qBound(0, position, recordCount() - 1);
    d->eof = isEmpty();
    if (target == d->position)
        return;
    d->position = target;
    Q_EMIT currentChanged(target);
}

void TQuery::first()
{
    moveTo(0);
}

void TQuery::last()
{
    moveTo(recordCount() - 1);
}

void TQuery::next()
{
    if (d->position + 1 < recordCount())
        moveTo(d->position + 1);
    else
        d->eof = true;
}

void TQuery::prior()
{
    moveTo(d->position - 1);
}

bool TQuery::eof() const
{
    return d->eof;
}

bool TQuery::locate(const QString &field, const QVariant &value, LocateOptions options)
{
    if (isEmpty())
        return false;
    if (d->rows->windowed()) {
        const TStatement condition =
            options.testFlag(PartialKey)
                ? TStatement(u"charindex("_s).value(value).sql(u", [%1]) = 1"_s.arg(field))
                : TStatement(u"[%1] = "_s.arg(field)).value(value);
        const int row = d->rows->find(condition);
        if (row >= 0)
            moveTo(row);
        return row >= 0;
    }
    const auto shape = [options](const QVariant &v) {
        if (options.testFlag(CaseInsensitive))
            return PersianText::fold(v.toString());
        return options == Exact ? v.toString() : PersianText::oneForm(v.toString());
    };
    const QString wanted = shape(value);
    const int column = d->index(field);
    for (int row = 0; row < recordCount(); ++row) {
        const QString held = shape(d->rows->value(row, column));
        if (options.testFlag(PartialKey) ? held.startsWith(wanted) : held == wanted) {
            moveTo(row);
            return true;
        }
    }
    return false;
}

const QList<TFieldInfo> &TQuery::fields() const
{
    return d->open().fields();
}

int TQuery::fieldIndex(const QString &name) const
{
    return d->rows ? d->rows->fieldIndex(name) : -1;
}

QVariant TQuery::value(const QString &field) const
{
    if (d->rows && fieldIndex(field) < 0 && field.compare(u"Row", Qt::CaseInsensitive) == 0)
        return std::max(d->position, 0) + 1;
    const int column = d->index(field);
    return d->editing() ? d->edited.values[column] : d->rows->value(d->position, column);
}

QVariant TQuery::valueAt(int row, int fieldIndex) const
{
    return d->open().value(row, fieldIndex);
}

bool TQuery::isHere(int row, int fieldIndex) const
{
    if (!d->rows || !d->connection->isOpen())
        return false;
    if (d->connection->engine().answersAtOnce())
        return true;
    return d->rows->isHere(row) &&
           !(d->rows->windowed() && d->rows->knownColumns().fields.value(fieldIndex).large);
}

void TQuery::readSoon(int row)
{
    if (!d->rows || !d->connection->isOpen() || isHere(row) || row < 0 || row >= recordCount())
        return;
    if (!d->toCome)
        d->toCome = std::make_unique<TRowsToCome>(*this, *d->connection, d->rows);
    d->toCome->want(row);
}

void TQuery::askAgain()
{
    if (d->toCome)
        d->toCome->askAgain();
}

qlonglong TQuery::keyAt(int row) const
{
    return d->rows ? d->rows->keyAt(row) : 0;
}

int TQuery::rowOfKey(qlonglong key) const
{
    return d->rows && d->rows->windowed() ? d->rows->rowOfKey(key) : -1;
}

void TQuery::append()
{
    d->beginEdit(State::Insert);
}

void TQuery::edit()
{
    if (d->position < 0)
        throw TDatabaseError(TFault::RowGone, u"no row to edit"_s, d->statement.boundText());
    d->beginEdit(State::Edit);
}

void TQuery::setValue(const QString &field, const QVariant &value)
{
    const int column = d->index(field);
    if (!d->editing())
        throw TDatabaseError(TFault::BadStatement, u"no row under edit"_s, d->statement.boundText());
    d->edited.values[column] = value;
    d->edited.changed[column] = true;
}

void TQuery::post()
{
    if (!d->editing())
        return;
    const bool newRow = d->state == State::Insert;
    RowWriter::write(*d->connection, RowWriter::baseTable(d->statement.boundText()), d->edited, newRow);
    d->state = State::Browse;
    if (newRow) {
        const int key = d->rows->windowed() ? d->rows->fieldIndex(d->keyField) : -1;
        d->position = d->rows->append(d->edited.values, key < 0 ? 0 : d->edited.values[key].toLongLong());
        d->eof = false;
    } else {
        d->rows->replace(d->position, d->edited.values);
    }
    Q_EMIT posted();
    if (newRow)
        Q_EMIT currentChanged(d->position);
}

void TQuery::cancel()
{
    if (d->editing())
        d->state = State::Browse;
}

int TQuery::execSql()
{
    close();
    d->connection->beforeStatement(d->statement);
    TEngine &engine = d->connection->engine();
    const TBoundStatement bound{d->statement.boundText(), d->statement.values(), d->params};
    if (QList<TBoundStatement> *kept = engine.keptInserts()) {
        kept->append(bound);
        return 1;
    }
    return engine.execute(bound);
}

TConnection *TQuery::connection() const
{
    return d->connection;
}
