// SPDX-License-Identifier: Apache-2.0
#include "app/dlg_select_app_type.h"
#include "app/DlgAbout.h"
#include "app/DlgCustomizationTool_v2.h"
#include "app/RegisterPages.h"
#include "config/EditorXmlData.h"
#include "core/Version.h"
#include "profile/signing/dlg_sign_package.h"
#include "profile/signing/dlg_sign_profile.h"
#include "resources/Resources.h"
#include "tests/app/GermanTexts.h"
#include "tests/app/looks/PseudoLanguage.h"
#include "tests/app/PrivatePlace.h"
#include "welcome/tab_import_xml.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSet>
#include <QtTest>

namespace {

using Texts = QSet<QString>;

/// A name that the window shows but did not choose.
const QString signingIdentity = QStringLiteral("ACME-IT");

/// Names of plug-ins come from the vendor's list and are not translated.
bool isData(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (qobject_cast<const QListWidget *>(widget))
            return true;
    }
    return false;
}

QStringList textsOf(const QWidget *widget)
{
    QStringList texts = {widget->toolTip(), widget->accessibleName(), widget->accessibleDescription()};
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        texts += label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        texts += button->text();
    if (const auto *group = qobject_cast<const QGroupBox *>(widget))
        texts += group->title();
    if (const auto *line = qobject_cast<const QLineEdit *>(widget))
        texts += line->placeholderText();
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        for (int i = 0; i < combo->count(); ++i)
            texts += combo->itemText(i);
    }
    return texts;
}

/// Everything that a window and its parts say, blanks at the ends apart.
Texts textsIn(const QWidget &window)
{
    Texts texts;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (isData(widget))
            continue;
        for (const QString &text : textsOf(widget)) {
            if (!text.contains(signingIdentity))
                texts += text.trimmed();
        }
    }
    texts -= QString();
    return texts;
}

Texts textsOfAllWindows()
{
    Texts texts;
    for (const PCW_CONFIGTYPE type : {PCW_CONFIG_PACKAGE, PCW_CONFIG_PROFILE}) {
        DlgCustomizationTool_v2 window(true, type);
        registerPages(window);
        window.InitTabWidgets();
        texts += textsIn(window);
    }
    texts += textsIn(DlgAbout());
    texts += textsIn(dlg_select_app_type());
    texts += textsIn(dlg_sign_profile(QString(), {signingIdentity}, nullptr));
    texts += textsIn(dlg_sign_package({signingIdentity}, nullptr));
    texts += textsIn(tab_import_xml(nullptr));
    return texts;
}

} // namespace

class tst_Translation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initPctResources(); }
    void cleanup() { GermanTexts::removeTranslators(); }

    void aLanguageIsFoundByItsCode_data();
    void aLanguageIsFoundByItsCode();
    void everyTextIsOfferedForTranslation();

private:
    PrivatePlace m_place;
};

void tst_Translation::aLanguageIsFoundByItsCode_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("cancel");
    const QString english = QStringLiteral("Cancel");
    const QString german = QStringLiteral("Abbrechen");
    QTest::newRow("none") << QString() << true << english;
    QTest::newRow("English") << QStringLiteral("en") << true << english;
    QTest::newRow("English of a country") << QStringLiteral("en_GB") << true << english;
    QTest::newRow("German") << QStringLiteral("de") << true << german;
    QTest::newRow("German of a country") << QStringLiteral("de_AT") << true << german;
    QTest::newRow("no translation") << QStringLiteral("eo") << false << english;
    QTest::newRow("no language") << QStringLiteral("../de") << false << english;
}

void tst_Translation::aLanguageIsFoundByItsCode()
{
    QFETCH(QString, language);
    QFETCH(bool, found);
    QCOMPARE(installTranslation(*QCoreApplication::instance(), language), found);
    const dlg_select_app_type chooser;
    QTEST(chooser.findChild<QAbstractButton *>(QStringLiteral("pushButton_Cancel"))->text(), "cancel");
    QCOMPARE(GermanTexts::installed().isEmpty(), language.left(2) != QLatin1String("de"));
}

/// Whatever a language lacks: a text that a form or a class does not offer for translation stays without
/// brackets.
void tst_Translation::everyTextIsOfferedForTranslation()
{
    PseudoLanguage language;
    QVERIFY(QCoreApplication::installTranslator(&language));
    Texts texts = textsOfAllWindows();
    QVERIFY(texts.size() > 60);
    for (const QString &text : Texts(texts)) {
        if (text.contains(QLatin1Char('[')))
            texts -= text;
    }
    QVERIFY2(texts.isEmpty(), qUtf8Printable(texts.values().join(QStringLiteral(" | "))));
}

QTEST_MAIN(tst_Translation)
#include "tst_Translation.moc"
