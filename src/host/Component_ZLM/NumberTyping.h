#pragma once

#include <QString>

#include <optional>

/// Numbers while they are being typed: "12.", "-" and "" are on their way to a number. Carets are positions in
/// the text and move with it.
namespace NumberTyping {

/// A typed or pasted text as a plain number: Latin digits, "-" first, one ".", without separators, blanks, currency
/// words and direction marks. Empty where the text cannot become a number.
std::optional<QString> plain(const QString &text, int &caret, bool decimals, bool negative);
/// A plain number, complete: "7." to "7", ".5" to "0.5", "007" to "7", "-" and "." to nothing.
QString settled(const QString &text);
/// A plain number with separators, "1234567.5" to "1,234,567.5".
QString grouped(const QString &plain, int &caret);
QString withoutSeparators(const QString &text);

} // namespace NumberTyping
