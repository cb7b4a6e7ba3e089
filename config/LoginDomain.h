// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

/// Whether the whole string is "@" and a domain name: labels of 1 to 63 letters, digits and hyphens, neither
/// first nor last a hyphen, each followed by a dot, and a last label of two or more letters; 1 to 255
/// characters after the "@". Letters are those of ASCII, in either case.
///
/// Gives what the ECMAScript expression
/// `^@(?=.{1,255}$)(?:[A-Za-z0-9](?:[A-Za-z0-9-]{0,61}[A-Za-z0-9])?\.)+[A-Za-z]{2,}$`
/// gives for the string as UCS-4, in bounded time for any length.
bool isLoginDomain(const QString &text);

/// The parts between the semicolons, without the empty ones and otherwise as they stand.
QStringList loginDomainsOf(const QString &list);
