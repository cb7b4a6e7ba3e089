// SPDX-License-Identifier: Apache-2.0
#include "profile/ManagementService.h"
#include "tests/resources/GuidePages.h"
#include "tests/support/TestFiles.h"

#include <QLocale>
#include <QtTest>

namespace {

/// What tables for people say of a service, cell by cell.
QStringList cellsOf(const ManagementService &service)
{
    const QString limit =
        service.maximumBytes == 0
            ? QStringLiteral("not known")
            : QLocale(QLocale::English).toString(service.maximumBytes) + QStringLiteral(" bytes");
    const bool isPayload = service.style == ProfileForm::Style::Payload;
    return {service.name, service.word, isPayload ? QStringLiteral("payload") : QStringLiteral("mcx"),
            service.traits.testFlag(ManagementService::TakesSigned) ? QStringLiteral("yes")
                                                                    : QStringLiteral("no"),
            limit};
}

QStringList allCells()
{
    QStringList rows;
    for (const ManagementService &service : ManagementService::all())
        rows.append(cellsOf(service).join(QLatin1Char('|')));
    return rows;
}

QStringList childTexts(const QDomElement &row)
{
    QStringList texts;
    for (QDomElement cell = row.firstChildElement(); !cell.isNull(); cell = cell.nextSiblingElement())
        texts.append(cell.text());
    return texts;
}

const GuidePage &deploymentPage()
{
    return *GuidePages::find(QStringLiteral("Deployment.html"));
}

/// The rows of the table in the body of the guide's page.
QStringList rowsOfGuide()
{
    QStringList rows;
    for (const QDomElement &table : GuidePages::elements(deploymentPage(), QStringLiteral("table"))) {
        const QDomElement body = table.firstChildElement(QStringLiteral("tbody"));
        for (QDomElement row = body.firstChildElement(); !row.isNull(); row = row.nextSiblingElement())
            rows.append(childTexts(row).join(QLatin1Char('|')));
    }
    return rows;
}

/// The rows of the manual's table about services, without their fourth column.
QStringList rowsOfManual()
{
    QStringList rows;
    const QString manual = QString::fromUtf8(TestFiles::read(QStringLiteral(PCT_MANUAL)));
    const QString table =
        manual.section(QStringLiteral("| Service | `--for` |"), 1).section(QStringLiteral("\n\n"), 0, 0);
    for (const QString &line : table.split(QLatin1Char('\n')).mid(2)) {
        QStringList cells = line.split(QLatin1Char('|'));
        for (QString &cell : cells)
            cell = cell.remove(QLatin1Char('`')).trimmed();
        cells = cells.mid(1, cells.size() - 2);
        cells.removeAt(3);
        rows.append(cells.join(QLatin1Char('|')));
    }
    return rows;
}

} // namespace

/// That the guide, the manual and the program say the same of device managements.
class tst_HelpServices : public QObject
{
    Q_OBJECT

private slots:
    void theGuideSaysWhatTheTableSays() { QCOMPARE(rowsOfGuide(), allCells()); }

    void theManualSaysWhatTheTableSays() { QCOMPARE(rowsOfManual(), allCells()); }

    void theGuideSendsNobodyToJamfWithAPayloadThatItLoses()
    {
        const QString text = GuidePages::text(deploymentPage());
        QVERIFY(text.contains(QStringLiteral("Jamf Pro")));
        QVERIFY(text.contains(QStringLiteral("loses the window’s payload when the profile is not signed")));
        QVERIFY(!text.contains(QStringLiteral("the product reads the payload as it stands in the file")));
    }
};

QTEST_GUILESS_MAIN(tst_HelpServices)
#include "tst_HelpServices.moc"
