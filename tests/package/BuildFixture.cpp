// SPDX-License-Identifier: Apache-2.0
#include "tests/package/BuildFixture.h"

#include "resources/Resources.h"
#include "tests/package/VendorScripts.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>

void BuildFixture::setUp()
{
    initPctResources();
    m_folder = std::make_unique<QTemporaryDir>();
    m_tools = std::make_unique<FakeTools>();
    m_temporaryFolder = qgetenv("TMPDIR");
    TestFiles::write(at("in put.pkg"), "input");
    for (const QString &folder : {at("tmp"), at("out")})
        QDir().mkdir(folder);
    qputenv("TMPDIR", QFile::encodeName(at("tmp")));
    m_tools->addPackageTools(VendorScripts::preinstall(), VendorScripts::postinstall());
    m_tools->addSed();
    m_plan = BuildPlan();
    m_plan.inputPackage = at("in put.pkg");
    m_plan.outputPackage = at("out/%1 put.pkg");
    m_plan.workFolder = defaultWorkFolder(m_plan.inputPackage);
}

void BuildFixture::tearDown()
{
    m_tools.reset();
    if (m_temporaryFolder.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", m_temporaryFolder);
}

QString BuildFixture::at(const char *name) const
{
    return m_folder->filePath(QString::fromLatin1(name));
}

QStringList BuildFixture::entriesOf(const char *folder) const
{
    return QDir(at(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

bool BuildFixture::builds()
{
    m_report = buildPackage(m_plan);
    return m_report.succeeded();
}

void BuildFixture::flattenWith(const QByteArray &command)
{
    m_tools->addPackageTools(VendorScripts::preinstall(), VendorScripts::postinstall(), ":", command);
}

void BuildFixture::changeAfterExpansion(const QByteArray &command)
{
    m_tools->addPackageTools(VendorScripts::preinstall(), VendorScripts::postinstall(), command);
}
