// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QString>

struct Product;

/// A vendor package that is expanded once for builds that follow each other. A build changes the scripts
/// only, so these are put back before the next one, and the payload stays what it was when it was verified: a
/// copy of the tree would have to be hashed again, which costs more than to expand. Blocks; one thread at a
/// time.
class SharedExpansion
{
public:
    /// Works in an empty folder of the caller's, who removes it.
    explicit SharedExpansion(const QString &folder);

    /// The folder with the package as it comes from the vendor. Always for the same package.
    Result<QString> fresh(const QString &package, const Product &product);

    /// The same folder after the first build.
    QString folder() const { return m_expanded; }

private:
    Result<> expand(const QString &package, const Product &product);
    Result<> restore(const Product &product) const;
    QString scripts(const Product &product) const;
    QString pristine() const { return m_folder + QStringLiteral("/scripts"); }

    QString m_folder;
    QString m_expanded; ///< empty until it is there
};
