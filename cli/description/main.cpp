// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Describe.h"
#include "cli/Verb.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return describe(pctVerbs(), QCoreApplication::arguments().mid(1));
}
