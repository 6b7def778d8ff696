#pragma once

#include <QDirIterator>
#include <QFile>
#include <QStringList>

/// The string literals of a folder's C++ sources, those side by side put together.
inline QStringList SourceLiterals(const QString &folder)
{
    QStringList literals;
    QDirIterator files(QStringLiteral(KETEBIONPAP_SOURCE "/") + folder, {"*.cpp", "*.h"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        bool goesOn = false; // nothing but blanks since the last literal
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (QStringView(text).mid(i, 2) == u"//") {
                i = text.indexOf(u'\n', i);
                if (i < 0)
                    break;
            } else if (text[i] == u'\'') {
                i += text.mid(i + 1, 1) == u"\\" ? 3 : 2;
                goesOn = false;
            } else if (text[i] == u'"') {
                if (!goesOn)
                    literals.append(QString());
                for (++i; i < text.size() && text[i] != u'"'; ++i) {
                    if (text[i] == u'\\')
                        literals.last() += text.mid(++i, 1) == u"n" ? QChar(u'\n') : text[i];
                    else
                        literals.last() += text[i];
                }
                goesOn = true;
            } else if (!text[i].isSpace()) {
                goesOn = false;
            }
        }
    }
    return literals;
}
