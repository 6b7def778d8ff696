#pragma once

class TConnection;

/// Fills a new database with a sample company, in one transaction: settings, groups, ledger accounts, earnings and
/// deductions, calculation methods, tax tables, 200 employees with their families and personnel orders, staff
/// outputs, and the work calendar of 1404 and 1405. Always the same data.
///
/// The tax tables hold the official brackets of the tax on salaries in Iran, yearly amounts in rials: articles 84
/// and 85 of the Direct Taxes Act with the amounts of the Budget Acts of 1403 and 1404. A bracket begins one rial
/// above the one before, since both bounds belong to a bracket.
///
/// Throws TDatabaseError, also for a database that holds such rows already; nothing is stored then.
void FillSampleCompany(TConnection &connection);
