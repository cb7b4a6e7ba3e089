// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// Property lists at the borders of what is one, a row for each class that the public test suites of
/// Foundation, Python and libplist know. Where these disagree Foundation is right. Each row is a whole
/// profile of the Editor, good but for what its name says.
struct PropertyListCase
{
    QByteArray name;
    QByteArray profile;
    bool isRead = false;
    QString domains;    ///< what the setting strLoginDomainList is then
    bool isUtf8 = true; ///< whether the window, which takes a file for UTF-8 text, can read it, too
};

namespace PropertyListCases {

QList<PropertyListCase> xml();
QList<PropertyListCase> binary();
QList<PropertyListCase> oldStyle();

/// Makes them the rows of the test function that runs, with a column for each member but the name.
void addRows(const QList<PropertyListCase> &cases);

/// The profile in which a value, in XML, is the list of domains.
QByteArray profileWith(const QByteArray &value);

/// Such a profile as a binary list in which the value is an object, given by its bytes.
QByteArray binaryProfileWith(const QByteArray &object);

} // namespace PropertyListCases
