// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Describe.h"
#include "tests/cli/SampleVerbs.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return describe(sampleVerbs(), QCoreApplication::arguments().mid(1));
}
