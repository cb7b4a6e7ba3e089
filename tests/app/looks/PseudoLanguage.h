// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTranslator>

/// A language made of English: every text stands in brackets, has accents, and is longer by two fifths, as
/// some languages make it. What is not in brackets is not translated.
class PseudoLanguage : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }
};
