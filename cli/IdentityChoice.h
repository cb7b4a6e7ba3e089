// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Option.h"
#include "core/Result.h"

#include <QList>
#include <QString>

struct ProfilePayloadInfo;
class VerbLine;

/// What a command line says of the identity of a profile. What was not given is empty.
struct IdentityChoice
{
    QString identifier;
    QString uuid;
    bool isStable = false; ///< UUIDs follow from the identifier

    static QList<Option> options();
    static IdentityChoice of(const VerbLine &line);

    /// What is wrong with the line; `hasSource` when an identifier can come from somewhere else.
    Result<> check(bool hasSource) const;

    /// Whether nothing of an identity is needed beside it.
    bool isComplete() const;

    /// Completes an identity: what is given wins over what is there, and that over a fresh one.
    Result<> settle(ProfilePayloadInfo &identity) const;
};
