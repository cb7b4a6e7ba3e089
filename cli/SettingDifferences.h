// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QList>
#include <QString>

class Console;
struct EditorXmlData;

/// Two values under the name of what they are values of.
struct Difference
{
    QString name;
    QJsonValue first;
    QJsonValue second;
};

/// In which settings two records differ. What several forms say is the same in all of them: a ribbon that is
/// not there and an empty one, attachments as they are shipped.
QList<Difference> settingDifferences(const EditorXmlData &first, const EditorXmlData &second);

/// Objects with "name", "first" and "second".
QJsonArray differencesArray(const QList<Difference> &differences);

/// One line for each, behind the text that all begin with.
void writeLines(const QList<Difference> &differences, Console &console, const QString &start = {});
