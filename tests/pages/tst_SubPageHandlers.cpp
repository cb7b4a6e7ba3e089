// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "config/Product.h"
#include "pages/ISubPageHandler.h"
#include "pages/PageHandler.h"

#include <QCheckBox>
#include <QtTest>
#include <QVBoxLayout>

namespace {

/// A sub-page that differs by product.
class tab_sample : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_sample(bool editor, QWidget *parent = nullptr)
        : CTabWidget(parent)
        , m_editor(editor)
        , m_box(new QCheckBox)
    {
        m_box->setObjectName(QStringLiteral("checkBox_showStartPg"));
        (new QVBoxLayout(this))->addWidget(m_box);
    }

    bool editor() const { return m_editor; }
    void setShown(bool on) { m_box->setChecked(on); }

private:
    const bool m_editor;
    QCheckBox *m_box;
};

template <class Interface> class SampleHandler : public SubPageHandler<Interface, tab_sample>
{
public:
    explicit SampleHandler(bool editor)
        : SubPageHandler<Interface, tab_sample>(Product::of(editor), {1, QStringLiteral("Sample")})
    {
    }

protected:
    void fillPage(tab_sample &page, const EditorXmlData &data) override
    {
        page.setShown(data.bShowStartPage);
    }
};

class RibbonHandler : public SampleHandler<IRibbonSetHandler>
{
public:
    using SampleHandler::SampleHandler;

    void OnBeforeSave() override {}
};

const QString boxName = QStringLiteral("checkBox_showStartPg");

} // namespace

class tst_SubPageHandlers : public QObject
{
    Q_OBJECT

private slots:
    void productGoesOnToThePage()
    {
        for (const bool editor : {true, false}) {
            SampleHandler<IPreferenceHandler> handler(editor);
            const std::unique_ptr<QWidget> page(handler.GetWidget(true));
            QCOMPARE(qobject_cast<tab_sample *>(page.get())->editor(), editor);
        }
    }

    void preferenceHandlerGivesNoValueOfItsOwn()
    {
        SampleHandler<IPreferenceHandler> handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QVERIFY(!handler.GetProperty(boxName).isValid());
    }

    void ribbonSetHandlerGivesTheValuesOfItsControls()
    {
        RibbonHandler handler(true);
        QVERIFY(!handler.GetProperty(boxName).isValid());
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        const EditorXmlData data;
        QVERIFY(handler.ImportProperty(page.get(), &data));
        QCOMPARE(handler.GetProperty(boxName), QVariant(true));
    }

    void importNeedsTheHandlersOwnClassOfPage()
    {
        SampleHandler<IPreferenceHandler> handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QWidget other;
        const EditorXmlData data;
        QVERIFY(!handler.ImportProperty(&other, &data));
        QVERIFY(handler.ImportProperty(page.get(), &data));
    }
};

QTEST_MAIN(tst_SubPageHandlers)
#include "tst_SubPageHandlers.moc"
