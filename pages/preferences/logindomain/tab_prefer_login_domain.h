// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/PageHandler.h"

#include <QCoreApplication>
#include <QStringList>

#include <memory>

namespace Ui {
class tab_prefer_login_domain;
}
class QStandardItemModel;

/// Which domains users may, or may not, sign in from.
class tab_prefer_login_domain : public CTabWidget
{
    Q_OBJECT

public:
    explicit tab_prefer_login_domain(QWidget *parent = nullptr);
    ~tab_prefer_login_domain() override;

    /// Whether the whole string is "@" and a domain name, by the rule of isLoginDomain().
    static bool CheckDomain(const QString &domain);

    /// Replaces the listed domains, one row each, unchecked.
    void setDomains(const QStringList &domains);

    /// The listed domains from top to bottom, without empty rows.
    QStringList domains() const;

    /// Appends what has been typed, one or more domains with semicolons between them. Domains that are
    /// listed already are skipped; if one is malformed, the user is warned and nothing is added.
    void on_btn_add_domain_clicked();

    /// Removes the selected rows.
    void on_btn_remove_domains_clicked();

private:
    void followTyping(const QString &text);
    static QString mismatchOf(const QString &domain);
    void warnOfMismatch();
    void appendRow(const QString &domain);

    const std::unique_ptr<Ui::tab_prefer_login_domain> m_ui;
    QStandardItemModel *const m_domains;
};

/// The sub-page of the domains that users may sign in from. Editor only.
class CHandler_Prefer_LoginDomain : public PreferHandler<tab_prefer_login_domain>
{
    Q_DECLARE_TR_FUNCTIONS(CHandler_Prefer_LoginDomain)

public:
    explicit CHandler_Prefer_LoginDomain(bool editor);

    /// For "tableView_domains" the listed domains, joined with ";".
    QVariant GetProperty(const QString &objectName) override;

protected:
    void fillPage(tab_prefer_login_domain &page, const EditorXmlData &data) override;
};
