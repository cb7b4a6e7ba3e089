// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/PcwTypes.h"

#include <QList>
#include <QString>
#include <QStringList>

struct EditorXmlData;
struct Product;
struct _EditorXmlPuginData_;
class QDomDocument;
class QDomElement;
class QDomNamedNodeMap;
class QWidget;

/// The operations of the tool, by subsystem. Each heading is implemented in the folder it names, so
/// whoever links that folder's library has its operations. Operations report success by their result
/// and never throw; why one failed goes to the log. `bEditor` is true for the Editor, false for the Reader;
/// the forms that take a Product, and those in package/ that say why they failed, are what the rest of the
/// tool uses.
class CCommon
{
public:
    // ---- The two modes (config/CCommon.cpp). Set once by the main window, read everywhere. ----

    static void SetPCWConfigType(PCW_CONFIGTYPE type);
    static PCW_CONFIGTYPE GetPCWConfigType();
    static void SetPCWAppType(PCW_APPTYPE type);
    static PCW_APPTYPE GetPCWAppType();

    /// The folder of the running executable, without a trailing slash.
    static QString GetAppDirPath();

    // ---- Reading a configuration document (config/CCommon_read.cpp) ----

    /// Reads a document into the record. Settings that the document does not have keep their values.
    /// False when there is no record, or no readable well-formed document within XmlStream's limits and
    /// ConfigDocument::maximumImportBytes; the record is then as it was, and the log says why.
    static bool ParseXml(const QString &path, EditorXmlData *pData);

    /// Logs "<tag> element:" and the element as XML with an indent of 4.
    static void printDomElement(const QString &tag, const QDomElement &element);

    // ---- Writing a configuration document (config/CCommon_write.cpp) ----
    // The order is: create, preferences, plug-ins, installation, ribbon. Without settings it is the window's
    // live record that is written.

    /// Builds the whole element tree into an empty document.
    static void EditorXmlCreateEmptyXml(QDomDocument &document, bool bEditor);
    static void EditorXmlCreateEmptyXml(QDomDocument &document, const Product &product,
                                        const EditorXmlData &settings);

    /// Appends an element to the parent with one attribute for each "name:value". A string with any
    /// other number of colons is skipped, so a value that holds a colon cannot be written this way.
    static void CreateItem(const QString &tagName, const QStringList &attributes, QDomDocument &document,
                           QDomElement &parent);

    /// Fills the preference items, and the version of an Editor document.
    static void EditorXmlSavePreferences(QDomDocument &document, const QString &version);
    static void EditorXmlSavePreferences(QDomDocument &document, const QString &version,
                                         const EditorXmlData &settings);

    /// Fills the list of plug-ins not to load.
    static void EditorXmlSavePlugins(QDomDocument &document);
    static void EditorXmlSavePlugins(QDomDocument &document, const EditorXmlData &settings);

    /// Sets the version of an Editor document again; the installation items need no filling.
    static void EditorXmlSaveInstallation(QDomDocument &document, const QString &version);

    /// Adds the ribbon elements. The quick-access bar goes in only together with a ribbon definition.
    static void EditorXmlSaveRibbonSet(QDomDocument &document);
    static void EditorXmlSaveRibbonSet(QDomDocument &document, const EditorXmlData &settings);

    /// Fills one preference item; `text` is its key, compared without case.
    static void EditorXmlFillPreValue(const QString &text, const QDomNamedNodeMap &attributes);
    static void EditorXmlFillPreValue(const QString &text, const QDomNamedNodeMap &attributes,
                                      const EditorXmlData &settings);

    /// The plug-ins of the product as it ships, in display order; empty when the list cannot be read.
    static QList<_EditorXmlPuginData_> EditorXmlReadPluginsTemplate(bool bEditor);
    static QList<_EditorXmlPuginData_> EditorXmlReadPluginsTemplate(const Product &product);

    // ---- Inspecting, expanding and flattening packages (package/FlatPackage.cpp) ----
    // All block on external commands and may run on any thread.

    /// Whether the file is the installer package of the product.
    static bool CheckPkg(QString pkgPath, bool bEditor);

    /// Expands a flat package into a folder that must not exist yet. Always true: what is missing
    /// afterwards shows the failure.
    static bool ExpandPkg(QString pkgPath, QString destDir);

    /// Flattens a folder into a package file.
    static bool FlattenUnPkg(QString srcDir, QString outPkg);

    // ---- Adding to an expanded package (package/ExpandedPackage.cpp) ----

    /// The product version that the postinstall script names, or empty; see productVersion().
    static QString GetAppVersion(QString pkgDir, bool bEditor);

    /// Writes the document of the window's live record to xmlPath, or to "ProfStore.xml" in the temporary
    /// folder when that is empty, and adds it to the package. The document stays where it was written.
    static bool EditorXmlConfigfileToPkg(QString pkgDir, bool bEditor, const QString &xmlPath);

    /// Copies a document into the package's Scripts folder as "ProfStore.xml" and switches it on.
    /// False when there is one already.
    static bool EditorXmlAddfileToPkg(QString xmlFile, QString pkgDir, bool bEditor);

    /// Puts "key/name:value;" in front of the preference entries that postinstall writes. The three
    /// texts enter a sed expression unescaped.
    static bool RegistryToPkg(QString key, QString name, QString value, QString pkgDir, bool bEditor);

    /// Adds the `duti` tool and switches on that postinstall registers the product as PDF viewer.
    static bool SetDefaultPDF(QString pkgDir);

    /// Copies a file into the Scripts folder of the component package below the expansion's top folder.
    static bool AddFileToPkg(QString file, QString topDir, bool bEditor);

    /// Makes preinstall find the logged-in user at the console, where a device management runs it. All or
    /// nothing.
    static bool AdaptPreInstallForIntune(QString pkgDir, bool bEditor);

    /// The same for postinstall.
    static bool AdaptPostInstallForIntune(QString pkgDir, bool bEditor);

    // ---- Laying out pages (pages/CCommon_relayout.cpp) ----

    /// Hides the controls that are marked for the Editor when the product is the Reader, and takes them
    /// out of the page's layouts. User-interface thread only.
    static void ReLayout(QWidget *page, bool bEditor);

private:
    static PCW_CONFIGTYPE m_ConfigType;
    static PCW_APPTYPE m_AppType;
};
