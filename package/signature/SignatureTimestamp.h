// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/signature/CertificateChain.h"

#include <optional>

/// A timestamp of RFC 3161 in a signature.
struct SignatureTimestamp
{
    QDateTime time;        ///< UTC
    QString service;       ///< who says so
    QString problem;       ///< why it counts for nothing; empty when it counts
    bool isForged = false; ///< it cannot have been made for this signature, and before today
};

/// The timestamp in a message whose signature holds; nothing when there is none. Certificates of the package
/// help to find the chain of the service.
std::optional<SignatureTimestamp> timestampIn(CMS_ContentInfo *message, const TrustAnchors &anchors,
                                              const std::vector<OpenSslOwners::Certificate> &ofPackage);
