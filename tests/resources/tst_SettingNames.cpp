// SPDX-License-Identifier: Apache-2.0
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/Settings.h"
#include "resources/Resources.h"
#include "tests/resources/GuidePages.h"
#include "tests/support/TestFiles.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QDomDocument>
#include <QtTest>

namespace {

using Window = DlgCustomizationTool_v2;

/// What the window says of a control: its own text, or the name that screen readers say.
QString titleOf(const QWidget &control)
{
    const auto *button = qobject_cast<const QAbstractButton *>(&control);
    return button ? button->text() : control.accessibleName();
}

QStringList choicesOf(const QWidget &control)
{
    QStringList words;
    const auto *list = qobject_cast<const QComboBox *>(&control);
    for (int row = 0; list && row < list->count(); ++row)
        words += list->itemText(row);
    return words;
}

QStringList wordsOf(const Setting &setting)
{
    QStringList words;
    for (const Setting::Choice &choice : setting.choices)
        words += choice.word;
    return words;
}

/// The part of the guide that a help address leads to.
QDomElement sectionOf(const QString &help)
{
    const GuidePage *page = GuidePages::find(help.section(QLatin1Char('#'), 0, 0));
    const QString id = help.section(QLatin1Char('#'), 1);
    if (!page || id.isEmpty())
        return page ? page->document.documentElement() : QDomElement();
    for (const QDomElement &element : GuidePages::elements(*page)) {
        if (element.attribute(QStringLiteral("id")) == id)
            return element;
    }
    return {};
}

/// The texts that a translation has finished.
QStringList translatedTexts(const QString &path)
{
    QStringList texts;
    QDomDocument translation;
    if (!translation.setContent(TestFiles::read(path)))
        return texts;
    const QDomNodeList messages = translation.elementsByTagName(QStringLiteral("message"));
    for (int i = 0; i < messages.count(); ++i) {
        const QDomElement message = messages.at(i).toElement();
        const QDomElement text = message.firstChildElement(QStringLiteral("translation"));
        if (!text.text().isEmpty() && !text.hasAttribute(QStringLiteral("type")))
            texts += message.firstChildElement(QStringLiteral("source")).text();
    }
    return texts;
}

} // namespace

/// What people can call a setting by is the same in the window, the guide, the translations and the manual.
class tst_SettingNames : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }

    void theManualOfPctHasARowForEverySettingAndNoOther()
    {
        const QString manual = QString::fromUtf8(TestFiles::read(QStringLiteral(PCT_MANUAL)));
        const QString table = manual.section(QStringLiteral("| Setting | Type | Meaning |"), 1)
                                  .section(QStringLiteral("\n\n"), 0, 0);
        QStringList wanted;
        for (const Setting &setting : settings())
            wanted += QStringLiteral("| `%1` |").arg(setting.name);
        QStringList rows;
        for (const QString &line : table.split(QLatin1Char('\n'))) {
            if (line.startsWith(QLatin1String("| `")))
                rows += line.section(QLatin1Char('|'), 0, 1) + QLatin1Char('|');
        }
        QCOMPARE(rows, wanted);
    }

    void theGuideNamesEverySettingWhereItsHelpLeads()
    {
        for (const Setting &setting : settings()) {
            const QDomElement section = sectionOf(setting.help);
            QVERIFY2(!section.isNull(), setting.name.data());
            const QString text = section.text().simplified();
            for (const QString &word : wordsOf(setting) + QStringList{setting.name, setting.title})
                QVERIFY2(text.contains(word), qPrintable(QStringLiteral("%1: %2").arg(setting.name, word)));
        }
    }

    void everyTranslationHasEveryTitleAndChoice()
    {
        const QDir folder(QStringLiteral(PCT_TRANSLATIONS));
        const QStringList files = folder.entryList({QStringLiteral("*.ts")});
        QVERIFY(!files.isEmpty());
        for (const QString &file : files) {
            const QStringList texts = translatedTexts(folder.filePath(file));
            for (const Setting &setting : settings()) {
                for (const QString &word : wordsOf(setting) + QStringList{setting.title})
                    QVERIFY2(texts.contains(word), qPrintable(file + QStringLiteral(": ") + word));
            }
        }
    }

    void controlsBearTheTitlesAndOfferTheChoices()
    {
        Window window(true, PCW_CONFIG_PACKAGE);
        registerPages(window);
        window.InitTabWidgets();
        for (const Setting &setting : settings()) {
            if (setting.control.turn == 0)
                continue;
            const auto *control = window.findChild<QWidget *>(setting.control.name);
            QVERIFY2(control, setting.control.name.data());
            QCOMPARE(titleOf(*control), QString(setting.title));
            if (qobject_cast<const QComboBox *>(control))
                QCOMPARE(choicesOf(*control), wordsOf(setting));
        }
    }
};

QTEST_MAIN(tst_SettingNames)
#include "tst_SettingNames.moc"
