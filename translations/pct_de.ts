<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>CHandler_InstallOption</name>
    <message>
        <source>Installation Options</source>
        <translation>Installationsoptionen</translation>
    </message>
    <message>
        <source>Allow you to change the default application language, install location, and other common installation settings.</source>
        <translation>Sprache der Anwendung, Installationsort und weitere allgemeine Installationseinstellungen festlegen.</translation>
    </message>
</context>
<context>
    <name>CHandler_Plugins</name>
    <message>
        <source>Plugins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Allow you to configure settings regarding plugins.</source>
        <translation>Einstellungen zu Plug-ins festlegen.</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_AIP</name>
    <message>
        <source>Microsoft Information Protection (MIP)</source>
        <translation>Microsoft Information Protection (MIP)</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_Advertisement</name>
    <message>
        <source>Advertisement</source>
        <translation>Werbung</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_IManage</name>
    <message>
        <source>Enable iManage10 SSO Login</source>
        <translation>iManage10-SSO-Anmeldung aktivieren</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_LoginDomain</name>
    <message>
        <source>Configure Login Domain</source>
        <translation>Anmeldedomäne konfigurieren</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_MyApps</name>
    <message>
        <source>Hide My Apps</source>
        <translation>„Meine Apps“ ausblenden</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_Security</name>
    <message>
        <source>Security Setting</source>
        <translation>Sicherheit</translation>
    </message>
</context>
<context>
    <name>CHandler_Prefer_StartPage</name>
    <message>
        <source>Start Page</source>
        <translation>Startseite</translation>
    </message>
</context>
<context>
    <name>CHandler_Preference</name>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Allow you to customize some basic settings.</source>
        <translation>Grundlegende Einstellungen anpassen.</translation>
    </message>
</context>
<context>
    <name>CHandler_RibbonSet</name>
    <message>
        <source>Ribbon Set</source>
        <translation>Menüband</translation>
    </message>
    <message>
        <source>Allow you to hide features from the Ribbon.</source>
        <translation>Funktionen aus dem Menüband ausblenden.</translation>
    </message>
</context>
<context>
    <name>CHandler_RibbonSet_RibCate</name>
    <message>
        <source>Ribbon Category</source>
        <translation>Menübandkategorie</translation>
    </message>
</context>
<context>
    <name>CHandler_RibbonSet_TabElem</name>
    <message>
        <source>Quick Access Toolbar</source>
        <translation>Schnellzugriffsleiste</translation>
    </message>
</context>
<context>
    <name>ChangedMarks</name>
    <message>
        <source>Reset to Default</source>
        <translation>Auf Standardwert zurücksetzen</translation>
    </message>
</context>
<context>
    <name>DlgAbout</name>
    <message>
        <source>Pelix Customization Tool</source>
        <translation>Pelix Customization Tool</translation>
    </message>
    <message>
        <source>Pelix Customization Wizard</source>
        <translation>Pelix Customization Wizard</translation>
    </message>
    <message>
        <source>Copyright © 2026 Pelix Software. All rights reserved.</source>
        <translation>Copyright © 2026 Pelix Software. Alle Rechte vorbehalten.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
</context>
<context>
    <name>DlgCustomizationTool_v2</name>
    <message>
        <source>Pelix Customization Tool</source>
        <translation>Pelix Customization Tool</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>Import a pkg installation package</source>
        <translation>Ein pkg-Installationspaket importieren</translation>
    </message>
    <message>
        <source>Save the configured settings as installation package</source>
        <translation>Die festgelegten Einstellungen als Installationspaket speichern</translation>
    </message>
    <message>
        <source>Customization Wizard Help</source>
        <translation>Hilfe zum Customization Wizard</translation>
    </message>
    <message>
        <source>About Customization Wizard</source>
        <translation>Info zum Customization Wizard</translation>
    </message>
    <message>
        <source>Import a .mobileconfig configuration profile</source>
        <translation>Ein Konfigurationsprofil (.mobileconfig) importieren</translation>
    </message>
    <message>
        <source>Save the configured settings as a&#xa0;.mobileconfig configuration profile</source>
        <translation>Die festgelegten Einstellungen als Konfigurationsprofil (.mobileconfig) speichern</translation>
    </message>
    <message>
        <source>User Guide</source>
        <translation>Benutzerhandbuch</translation>
    </message>
    <message>
        <source>About PCT</source>
        <translation>Info zu PCT</translation>
    </message>
    <message>
        <source>The input installer package is invalid.</source>
        <translation>Das geöffnete Installationspaket ist ungültig.</translation>
    </message>
    <message>
        <source>Package files (*.pkg)</source>
        <translation>Paketdateien (*.pkg)</translation>
    </message>
    <message>
        <source>Save config file for future modification</source>
        <translation>Konfigurationsdatei für spätere Änderungen speichern</translation>
    </message>
    <message>
        <source>xml files (*.xml)</source>
        <translation>XML-Dateien (*.xml)</translation>
    </message>
    <message>
        <source>Failed to create package. Please try again.</source>
        <translation>Das Paket konnte nicht erstellt werden. Bitte erneut versuchen.</translation>
    </message>
    <message>
        <source>The output package and configure file have been created successfully.</source>
        <translation>Ausgabepaket und Konfigurationsdatei wurden erstellt.</translation>
    </message>
    <message>
        <source>The output package has been created successfully.</source>
        <translation>Das Ausgabepaket wurde erstellt.</translation>
    </message>
    <message>
        <source>Please select the installation package for Pelix PDF Editor</source>
        <translation>Bitte das Installationspaket für Pelix PDF Editor auswählen</translation>
    </message>
    <message>
        <source>Please select the installation package for Pelix PDF Reader</source>
        <translation>Bitte das Installationspaket für Pelix PDF Reader auswählen</translation>
    </message>
    <message>
        <source>configration profiles (*.mobileconfig)</source>
        <translation>Konfigurationsprofile (*.mobileconfig)</translation>
    </message>
    <message>
        <source>Failed to create configure profile. Please try again.</source>
        <translation>Das Konfigurationsprofil konnte nicht erstellt werden. Bitte erneut versuchen.</translation>
    </message>
    <message>
        <source>profile (*.mobileconfig)</source>
        <translation>Profil (*.mobileconfig)</translation>
    </message>
    <message>
        <source>The configure profile has been created successfully.</source>
        <translation>Das Konfigurationsprofil wurde erstellt.</translation>
    </message>
    <message>
        <source>File signed successfully!</source>
        <translation>Die Datei wurde signiert.</translation>
    </message>
    <message>
        <source>Failed to sign the file, please try again.</source>
        <translation>Die Datei konnte nicht signiert werden. Bitte erneut versuchen.</translation>
    </message>
    <message>
        <source>No configuration profiles found, please try another option to continue.</source>
        <translation>Kein Konfigurationsprofil gefunden. Bitte mit einer anderen Option fortfahren.</translation>
    </message>
    <message>
        <source>%1: configuration profile</source>
        <translation>%1: Konfigurationsprofil</translation>
    </message>
    <message>
        <source>%1: installer package</source>
        <translation>%1: Installationspaket</translation>
    </message>
    <message>
        <source>There are settings that are not saved.</source>
        <translation>Es gibt Einstellungen, die nicht gesichert sind.</translation>
    </message>
    <message>
        <source>Don&apos;t Save</source>
        <translation>Nicht sichern</translation>
    </message>
    <message>
        <source>Saved: %1 (%2)</source>
        <translation>Gesichert: %1 (%2)</translation>
    </message>
    <message>
        <source>All settings have their defaults.</source>
        <translation>Alle Einstellungen haben ihre Standardwerte.</translation>
    </message>
    <message>
        <source>Settings that differ from the defaults: %1</source>
        <translation>Einstellungen, die von den Standardwerten abweichen: %1</translation>
    </message>
</context>
<context>
    <name>FileTypeTable</name>
    <message>
        <source>Ask; may always be allowed</source>
        <translation>Nachfragen; dauerhaft erlaubbar</translation>
    </message>
    <message>
        <source>Ask; may always be allowed or refused</source>
        <translation>Nachfragen; dauerhaft erlaubbar oder ablehnbar</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Do not open</source>
        <translation>Nicht öffnen</translation>
    </message>
    <message>
        <source>File Type</source>
        <translation>Dateityp</translation>
    </message>
    <message>
        <source>When It Is Opened</source>
        <translation>Beim Öffnen</translation>
    </message>
</context>
<context>
    <name>HiddenItemDelegate</name>
    <message numerus="yes">
        <source>(%n hidden)</source>
        <translation>
            <numerusform>(%n ausgeblendet)</numerusform>
            <numerusform>(%n ausgeblendet)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>IdentifierQuestion</name>
    <message>
        <source>The current profile identifier doesn&apos;t match the one in your system configuration. This may cause errors. Which identifier would you like to use?</source>
        <translation>Die aktuelle Profilkennung stimmt nicht mit der in der Systemkonfiguration überein. Das kann zu Fehlern führen. Welche Kennung soll verwendet werden?</translation>
    </message>
    <message>
        <source>Use Current</source>
        <translation>Aktuelle verwenden</translation>
    </message>
    <message>
        <source>Keep System</source>
        <translation>Installierte behalten</translation>
    </message>
    <message>
        <source>Makes a new identifier and UUID: the profile is installed beside the other one, not in its place.</source>
        <translation>Erzeugt Kennung und UUID neu: Das Profil wird neben dem anderen installiert, nicht an dessen Stelle.</translation>
    </message>
    <message>
        <source>Takes identifier and UUID of the installed profile, so that this one replaces it.</source>
        <translation>Übernimmt Kennung und UUID des installierten Profils, das damit ersetzt wird.</translation>
    </message>
</context>
<context>
    <name>MessagesView</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Nothing has been said yet.</source>
        <translation>Noch keine Meldungen.</translation>
    </message>
    <message>
        <source>Copy All</source>
        <translation>Alles kopieren</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Im Finder zeigen</translation>
    </message>
</context>
<context>
    <name>PageButton</name>
    <message numerus="yes">
        <source>%n setting(s) differ from the defaults</source>
        <translation>
            <numerusform>%n Einstellung weicht vom Standardwert ab</numerusform>
            <numerusform>%n Einstellungen weichen von den Standardwerten ab</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RibbonTree</name>
    <message>
        <source>hidden</source>
        <translation>ausgeblendet</translation>
    </message>
    <message>
        <source>hidden in part</source>
        <translation>teilweise ausgeblendet</translation>
    </message>
</context>
<context>
    <name>RibbonTreePage</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtern</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s) that the filter leaves out changed as well.</source>
        <translation>
            <numerusform>%n Eintrag, den der Filter auslässt, wurde mitgeändert.</numerusform>
            <numerusform>%n Einträge, die der Filter auslässt, wurden mitgeändert.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SigningDialog</name>
    <message>
        <source>Sign</source>
        <translation>Signieren</translation>
    </message>
    <message>
        <source>Don&apos;t Sign</source>
        <translation>Nicht signieren</translation>
    </message>
</context>
<context>
    <name>StatusArea</name>
    <message numerus="yes">
        <source>Messages (%n new)</source>
        <translation>
            <numerusform>Meldungen (%n neu)</numerusform>
            <numerusform>Meldungen (%n neu)</numerusform>
        </translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
</context>
<context>
    <name>WebViewInQt</name>
    <message>
        <source>The help page is not available.</source>
        <translation>Die Hilfeseite ist nicht verfügbar.</translation>
    </message>
</context>
<context>
    <name>WindowActions</name>
    <message>
        <source>Open…</source>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>Sichern …</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Next Page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <translation>Vorherige Seite</translation>
    </message>
    <message>
        <source>Help for This Page</source>
        <translation>Hilfe zu dieser Seite</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Ablage</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Widerrufen</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einsetzen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Im Dock ablegen</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>User Guide</source>
        <translation>Benutzerhandbuch</translation>
    </message>
    <message>
        <source>About PCT</source>
        <translation>Über PCT</translation>
    </message>
</context>
<context>
    <name>dlg_select_app_type</name>
    <message>
        <source>Pelix Customization Tool</source>
        <translation>Pelix Customization Tool</translation>
    </message>
    <message>
        <source>Please select an option to begin.</source>
        <translation>Bitte zu Beginn eine Option auswählen.</translation>
    </message>
    <message>
        <source>Pelix PDF Editor</source>
        <translation>Pelix PDF Editor</translation>
    </message>
    <message>
        <source>Pelix PDF Reader</source>
        <translation>Pelix PDF Reader</translation>
    </message>
    <message>
        <source>Configure Profile for Pelix PDF Editor</source>
        <translation>Profil für Pelix PDF Editor konfigurieren</translation>
    </message>
    <message>
        <source>Configure Profile for Pelix PDF Reader</source>
        <translation>Profil für Pelix PDF Reader konfigurieren</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>dlg_sign_package</name>
    <message>
        <source>Signing Package</source>
        <translation>Paket signieren</translation>
    </message>
    <message>
        <source>Signing a package verifies who made it and reveals later modifications. Device managements may refuse a package that is not signed.</source>
        <translation>Eine Signatur belegt, von wem das Paket stammt, und lässt spätere Änderungen erkennen. Geräteverwaltungen können ein unsigniertes Paket ablehnen.</translation>
    </message>
</context>
<context>
    <name>dlg_sign_profile</name>
    <message>
        <source>Signing Profile</source>
        <translation>Profil signieren</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;line-height:16px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:13px; color:#131313;&quot;&gt;Signing a profile prevents modifications and verifies the original author. Once signed, a profile can no longer be modified.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;line-height:16px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:13px; color:#131313;&quot;&gt;Eine Signatur verhindert Änderungen am Profil und belegt, von wem es stammt. Ein signiertes Profil kann nicht mehr geändert werden.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Signing Identity:</source>
        <translation>Signaturidentität:</translation>
    </message>
</context>
<context>
    <name>tab_import_xml</name>
    <message>
        <source>Welcome</source>
        <translation>Willkommen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#000000;&quot;&gt;Installation package imported successfully. Select one of the following options to proceed:&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#000000;&quot;&gt;Das Installationspaket wurde importiert. Wie geht es weiter?&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Initialize New Setup&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Start from the scratch using left panel.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Neue Konfiguration beginnen&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Über die Leiste links von Grund auf neu beginnen.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Modify Existing Configuration&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;To modify the settings, import or drag and drop an XML configuration file.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Vorhandene Konfiguration ändern&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Zum Ändern der Einstellungen eine XML-Konfigurationsdatei importieren oder hierher ziehen.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>xml files (*.xml)</source>
        <translation>XML-Dateien (*.xml)</translation>
    </message>
</context>
<context>
    <name>tab_installoption</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Installation Options</source>
        <translation>Installationsoptionen</translation>
    </message>
    <message>
        <source>Pre-Setting</source>
        <translation>Voreinstellung</translation>
    </message>
    <message>
        <source>Set as the default PDF viewer</source>
        <translation>Als Standardprogramm für PDF festlegen</translation>
    </message>
</context>
<context>
    <name>tab_plugins</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Plugins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Mark the plugin to disable:</source>
        <translation>Zu deaktivierende Plug-ins markieren:</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Mark All</source>
        <translation>Alle markieren</translation>
    </message>
    <message>
        <source>Mark None</source>
        <translation>Keine markieren</translation>
    </message>
    <message>
        <source>Invert Marks</source>
        <translation>Markierungen umkehren</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n are not loaded</source>
        <translation>
            <numerusform>%1 von %n nicht geladen</numerusform>
            <numerusform>%1 von %n nicht geladen</numerusform>
        </translation>
    </message>
    <message>
        <source>not loaded</source>
        <translation>nicht geladen</translation>
    </message>
</context>
<context>
    <name>tab_prefer_AIP</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Enable Default Sensitivity Label and Mandatory Sensitivity Labeling:</source>
        <translation>Standard- und verbindliche Vertraulichkeitsbezeichnung aktivieren:</translation>
    </message>
    <message>
        <source>Enable Default Sensitivity Label and Mandatory Sensitivity Labeling</source>
        <translation>Standard- und verbindliche Vertraulichkeitsbezeichnung aktivieren</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Aktiviert</translation>
    </message>
    <message>
        <source>MIP Authentication Library:</source>
        <translation>MIP-Authentifizierungsbibliothek:</translation>
    </message>
    <message>
        <source>MIP Authentication Library</source>
        <translation>MIP-Authentifizierungsbibliothek</translation>
    </message>
    <message>
        <source>MSAL</source>
        <translation>MSAL</translation>
    </message>
    <message>
        <source>ADAL</source>
        <translation>ADAL</translation>
    </message>
    <message>
        <source>Use the external browser for single sign-on</source>
        <translation>Externen Browser für Single Sign-On verwenden</translation>
    </message>
    <message>
        <source>Default does not set the policy. A profile that was saved so shows Disabled when it is opened again.</source>
        <translation>„Standard“ setzt die Richtlinie nicht. Ein so gesichertes Profil zeigt beim erneuten Öffnen „Deaktiviert“.</translation>
    </message>
</context>
<context>
    <name>tab_prefer_advertisement</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Remove Advertisement</source>
        <translation>Werbung entfernen</translation>
    </message>
</context>
<context>
    <name>tab_prefer_imanage</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Enable iManage 10 SSO Login</source>
        <translation>iManage-10-SSO-Anmeldung aktivieren</translation>
    </message>
</context>
<context>
    <name>tab_prefer_login_domain</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Configure allowed login domain whitelist</source>
        <translation>Liste zugelassener Anmeldedomänen festlegen</translation>
    </message>
    <message>
        <source>Configure disallowed login domain blacklist</source>
        <translation>Liste gesperrter Anmeldedomänen festlegen</translation>
    </message>
    <message>
        <source>Input domain:</source>
        <translation>Domäne eingeben:</translation>
    </message>
    <message>
        <source>@example.com</source>
        <translation>@example.com</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Domain List</source>
        <translation>Domänenliste</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>
The entered domain name does not match.</source>
        <translation>
Der eingegebene Domänenname ist ungültig.</translation>
    </message>
    <message>
        <source>Turns the whitelist off: signing in is not limited to the listed domains. The list is written all the same.</source>
        <translation>Schaltet die Zulassungsliste aus: Die Anmeldung ist nicht auf die aufgeführten Domänen beschränkt. Die Liste wird trotzdem geschrieben.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not begin with &quot;@&quot;.</source>
        <translation>„%1“ beginnt nicht mit „@“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no dot, as in &quot;@example.com&quot;.</source>
        <translation>„%1“ hat keinen Punkt wie „@example.com“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no domain: between dots stand letters, digits and inner hyphens, and letters at the end.</source>
        <translation>„%1“ ist keine Domäne: Zwischen Punkten stehen Buchstaben, Ziffern und innere Bindestriche, am Ende Buchstaben.</translation>
    </message>
    <message>
        <source>Only accounts of the listed domains may sign in.</source>
        <translation>Nur Konten der aufgeführten Domänen dürfen sich anmelden.</translation>
    </message>
</context>
<context>
    <name>tab_prefer_myapps</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Hide My Apps</source>
        <translation>„Meine Apps“ ausblenden</translation>
    </message>
</context>
<context>
    <name>tab_prefer_security</name>
    <message>
        <source>Security</source>
        <translation>Sicherheit</translation>
    </message>
    <message>
        <source>Disable all actions in PDFs</source>
        <translation>Alle Aktionen in PDF-Dateien deaktivieren</translation>
    </message>
    <message>
        <source>This setting determines whether to disable all the actions in PDF files. When the item is selected, the application will block all the actions in PDF files, including GoToE, GoToR, Launch, Thread, Import Data, Export Form Data, Submit Form, and Reset Form.</source>
        <translation>Diese Einstellung bestimmt, ob alle Aktionen in PDF-Dateien deaktiviert werden. Ist die Option gewählt, blockiert die Anwendung alle Aktionen in PDF-Dateien, darunter GoToE, GoToR, Launch, Thread, Daten importieren, Formulardaten exportieren, Formular senden und Formular zurücksetzen.</translation>
    </message>
    <message>
        <source>&lt;p&gt;This setting determines whether to disable all the actions in PDF files.&lt;/p&gt;&lt;p&gt;When the item is selected, the application will block all the actions in PDF files, including GoToE, GoToR, Launch, Thread, Import Data, Export Form Data, Submit Form, and Reset Form.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Diese Einstellung bestimmt, ob alle Aktionen in PDF-Dateien deaktiviert werden.&lt;/p&gt;&lt;p&gt;Ist die Option gewählt, blockiert die Anwendung alle Aktionen in PDF-Dateien, darunter GoToE, GoToR, Launch, Thread, Daten importieren, Formulardaten exportieren, Formular senden und Formular zurücksetzen.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>PDF File Attachments</source>
        <translation>PDF-Dateianhänge</translation>
    </message>
    <message>
        <source>All file attachments may be opened or saved to disk</source>
        <translation>Alle Dateianhänge dürfen geöffnet oder gespeichert werden</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Aktiviert</translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
    <message>
        <source>Edit the default list of file types (Extension)</source>
        <translation>Standardliste der Dateitypen (Erweiterungen) bearbeiten</translation>
    </message>
    <message>
        <source>This list sets a whitelist and a blacklist of file types, other than PDF and FDF, that may be opened from a document. If a file type is listed more than once, only its first entry counts. The list begins with &quot;version:1&quot;. Each item after it is made of a &quot;|&quot;, the extension with its leading dot, a &quot;:&quot; and a permission level: 0: The user is warned and may open the file or permanently allow access to files of this type. 1: The user is warned and may open the file, or permanently allow or permanently restrict access to files of this type. 2: Files of this type are always opened. 3: Files of this type may not be opened as attachments nor launched, and a message is shown.</source>
        <translation>Diese Liste legt fest, welche Dateitypen außer PDF und FDF aus einem Dokument heraus geöffnet werden dürfen und welche nicht. Ist ein Dateityp mehrfach aufgeführt, gilt nur der erste Eintrag. Die Liste beginnt mit &quot;version:1&quot;. Jeder weitere Eintrag besteht aus einem &quot;|&quot;, der Erweiterung mit führendem Punkt, einem &quot;:&quot; und einer Berechtigungsstufe: 0: Es erscheint eine Warnung; die Datei kann geöffnet oder der Zugriff auf Dateien dieses Typs dauerhaft erlaubt werden. 1: Es erscheint eine Warnung; die Datei kann geöffnet oder der Zugriff auf Dateien dieses Typs dauerhaft erlaubt oder dauerhaft gesperrt werden. 2: Dateien dieses Typs werden immer geöffnet. 3: Dateien dieses Typs werden weder als Anhang geöffnet noch gestartet; es erscheint eine Meldung.</translation>
    </message>
    <message>
        <source>&lt;p&gt;This list sets a whitelist and a blacklist of file types, other than PDF and FDF, that may be opened from a document. If a file type is listed more than once, only its first entry counts.&lt;/p&gt;&lt;p&gt;The list begins with &quot;version:1&quot;. Each item after it is made of a &quot;|&quot;, the extension with its leading dot, a &quot;:&quot; and a permission level:&lt;/p&gt;&lt;p&gt;0: The user is warned and may open the file or permanently allow access to files of this type.&lt;/p&gt;&lt;p&gt;1: The user is warned and may open the file, or permanently allow or permanently restrict access to files of this type.&lt;/p&gt;&lt;p&gt;2: Files of this type are always opened.&lt;/p&gt;&lt;p&gt;3: Files of this type may not be opened as attachments nor launched, and a message is shown.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Diese Liste legt fest, welche Dateitypen außer PDF und FDF aus einem Dokument heraus geöffnet werden dürfen und welche nicht. Ist ein Dateityp mehrfach aufgeführt, gilt nur der erste Eintrag.&lt;/p&gt;&lt;p&gt;Die Liste beginnt mit &quot;version:1&quot;. Jeder weitere Eintrag besteht aus einem &quot;|&quot;, der Erweiterung mit führendem Punkt, einem &quot;:&quot; und einer Berechtigungsstufe:&lt;/p&gt;&lt;p&gt;0: Es erscheint eine Warnung; die Datei kann geöffnet oder der Zugriff auf Dateien dieses Typs dauerhaft erlaubt werden.&lt;/p&gt;&lt;p&gt;1: Es erscheint eine Warnung; die Datei kann geöffnet oder der Zugriff auf Dateien dieses Typs dauerhaft erlaubt oder dauerhaft gesperrt werden.&lt;/p&gt;&lt;p&gt;2: Dateien dieses Typs werden immer geöffnet.&lt;/p&gt;&lt;p&gt;3: Dateien dieses Typs werden weder als Anhang geöffnet noch gestartet; es erscheint eine Meldung.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Example: version:1|.ade:3|.adp:3|.app:3|.arc:3|</source>
        <translation>Beispiel: version:1|.ade:3|.adp:3|.app:3|.arc:3|</translation>
    </message>
    <message>
        <source>File types</source>
        <translation>Dateitypen</translation>
    </message>
    <message>
        <source>Add File Type</source>
        <translation>Dateityp hinzufügen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Imported; a save drops it</source>
        <translation>Importiert; entfällt beim Sichern</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Nicht gesetzt</translation>
    </message>
</context>
<context>
    <name>tab_prefer_startpage</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Show Start Page</source>
        <translation>Startseite anzeigen</translation>
    </message>
</context>
<context>
    <name>tab_preference</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>tab_ribbonset</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Ribbon Set</source>
        <translation>Menüband</translation>
    </message>
</context>
<context>
    <name>tab_ribbonset_ribcate</name>
    <message>
        <source>Ribbon Category</source>
        <translation>Menübandkategorie</translation>
    </message>
    <message>
        <source>Mark what to hide from the ribbon:</source>
        <translation>Markieren, was im Menüband ausgeblendet wird:</translation>
    </message>
</context>
<context>
    <name>tab_ribbonset_tabelem</name>
    <message>
        <source>Quick Access Toolbar</source>
        <translation>Schnellzugriffsleiste</translation>
    </message>
    <message>
        <source>Mark what to hide from the quick access toolbar:</source>
        <translation>Markieren, was in der Schnellzugriffsleiste ausgeblendet wird:</translation>
    </message>
</context>
<context>
    <name>tab_userguide</name>
    <message>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
</context>
<context>
    <name>tab_welcome</name>
    <message>
        <source>Welcome</source>
        <translation>Willkommen</translation>
    </message>
    <message>
        <source>To open a file, click the Browse button or drag and drop it into this window.</source>
        <translation>Zum Öffnen auf „Durchsuchen“ klicken oder eine Datei in dieses Fenster ziehen.</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Durchsuchen</translation>
    </message>
    <message>
        <source>Package files (*.pkg)</source>
        <translation>Paketdateien (*.pkg)</translation>
    </message>
</context>
<context>
    <name>tab_welcome_profile</name>
    <message>
        <source>Welcome</source>
        <translation>Willkommen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px; line-height:20px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Configuration profiles are files that standardize settings for the macOS system. On your Mac, you can use the Device Management settings to install, view, or remove configuration profiles.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px; line-height:20px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Konfigurationsprofile sind Dateien, die Einstellungen für macOS vereinheitlichen. Installieren, Anzeigen und Entfernen erfolgt auf dem Mac in den Systemeinstellungen unter „Geräteverwaltung“.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Initialize New Setup&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Start from the scratch using left panel.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Neue Konfiguration beginnen&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Über die Leiste links von Grund auf neu beginnen.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Retrieve from Your Mac&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;If configuration profiles are already installed on your Mac device,click the &quot;Retrieve&quot; button to automatically import them.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Von diesem Mac abrufen&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Sind auf diesem Mac bereits Konfigurationsprofile installiert, importiert „Abrufen“ sie automatisch.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Retrieve</source>
        <translation>Abrufen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Modify Existing Configuration&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Import or drag and drop a .mobileconfig file to modify the settings.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:4px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#131313;&quot;&gt;Vorhandene Konfiguration ändern&lt;/span&gt;&lt;/p&gt;&lt;p style=&quot;margin-top:0px; margin-bottom:0px;&quot;&gt;&lt;span style=&quot;font-family:&apos;SF Pro Text&apos;; font-size:14px; color:#515151;&quot;&gt;Zum Ändern der Einstellungen eine .mobileconfig-Datei importieren oder hierher ziehen.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>profile files (*.mobileconfig)</source>
        <translation>Profildateien (*.mobileconfig)</translation>
    </message>
</context>
</TS>
