// SPDX-License-Identifier: Apache-2.0
#include "pages/preferences/logindomain/tab_prefer_login_domain.h"

#include "config/EditorXmlData.h"
#include "config/LoginDomain.h"
#include "pages/EnteredText.h"
#include "ui_tab_prefer_login_domain.h"

#include <QMessageBox>
#include <QStandardItemModel>

#include <algorithm>

namespace {

constexpr int longestShown = 60;

} // namespace

tab_prefer_login_domain::tab_prefer_login_domain(QWidget *parent)
    : CTabWidget(parent)
    , m_ui(std::make_unique<Ui::tab_prefer_login_domain>())
    , m_domains(new QStandardItemModel(0, 1, this))
{
    m_ui->setupUi(this);
    takeXmlTextOnly(m_ui->lineEdit_domain);
    m_domains->setHorizontalHeaderLabels({tr("Domain List")});
    m_ui->tableView_domains->setModel(m_domains);
    connect(m_ui->lineEdit_domain, &QLineEdit::textChanged, this, &tab_prefer_login_domain::followTyping);
    connect(m_ui->tableView_domains->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        m_ui->btn_remove_domains->setEnabled(m_ui->tableView_domains->selectionModel()->hasSelection());
    });
    m_ui->btn_remove_domains->setEnabled(false);
    followTyping(QString());
    connect(m_ui->btn_add_domain, &QPushButton::clicked, this,
            &tab_prefer_login_domain::on_btn_add_domain_clicked);
    connect(m_ui->lineEdit_domain, &QLineEdit::returnPressed, this,
            &tab_prefer_login_domain::on_btn_add_domain_clicked);
    connect(m_ui->btn_remove_domains, &QPushButton::clicked, this,
            &tab_prefer_login_domain::on_btn_remove_domains_clicked);
}

tab_prefer_login_domain::~tab_prefer_login_domain() = default;

bool tab_prefer_login_domain::CheckDomain(const QString &domain)
{
    return isLoginDomain(domain);
}

void tab_prefer_login_domain::setDomains(const QStringList &domains)
{
    m_domains->removeRows(0, m_domains->rowCount());
    for (const QString &domain : domains)
        appendRow(domain);
}

QStringList tab_prefer_login_domain::domains() const
{
    QStringList domains;
    for (int row = 0; row < m_domains->rowCount(); ++row) {
        const QStandardItem *item = m_domains->item(row);
        if (item && !item->text().isEmpty())
            domains += item->text();
    }
    return domains;
}

void tab_prefer_login_domain::on_btn_add_domain_clicked()
{
    const QStringList typed = loginDomainsOf(m_ui->lineEdit_domain->text().trimmed());
    if (!std::all_of(typed.begin(), typed.end(), CheckDomain)) {
        warnOfMismatch();
        return;
    }
    // The button is of no use without a text, and would give its focus away to whatever comes next.
    if (m_ui->btn_add_domain->hasFocus())
        m_ui->lineEdit_domain->setFocus();
    m_ui->lineEdit_domain->clear();
    for (const QString &domain : typed) {
        if (!domains().contains(domain))
            appendRow(domain);
    }
}

void tab_prefer_login_domain::followTyping(const QString &text)
{
    m_ui->btn_add_domain->setEnabled(!text.trimmed().isEmpty());
    const QStringList typed = loginDomainsOf(text.trimmed());
    const auto wrong = std::find_if_not(typed.begin(), typed.end(), CheckDomain);
    m_ui->label_mismatch->setVisible(wrong != typed.end());
    if (wrong != typed.end())
        m_ui->label_mismatch->setText(mismatchOf(*wrong));
    m_ui->lineEdit_domain->setAccessibleDescription(wrong == typed.end() ? QString() : mismatchOf(*wrong));
}

/// What an entry lacks first, for who is still typing it.
QString tab_prefer_login_domain::mismatchOf(const QString &domain)
{
    const QString shown = domain.size() > longestShown ? domain.left(longestShown) + QChar(0x2026) : domain;
    if (!domain.startsWith(QLatin1Char('@')))
        return tr("\"%1\" does not begin with \"@\".").arg(shown);
    if (!domain.contains(QLatin1Char('.')))
        return tr("\"%1\" has no dot, as in \"@example.com\".").arg(shown);
    return tr("\"%1\" is no domain: between dots stand letters, digits and inner hyphens, and letters at the "
              "end.")
        .arg(shown);
}

void tab_prefer_login_domain::warnOfMismatch()
{
    QMessageBox::warning(this, QString(), tr("\nThe entered domain name does not match."), QMessageBox::Ok);
}

void tab_prefer_login_domain::appendRow(const QString &domain)
{
    m_domains->appendRow(new QStandardItem(domain));
}

void tab_prefer_login_domain::on_btn_remove_domains_clicked()
{
    if (m_ui->btn_remove_domains->hasFocus())
        m_ui->tableView_domains->setFocus();
    // In the order of the selection, but each row by where it has moved to: removing one shifts the others.
    QList<QPersistentModelIndex> rows;
    for (const QModelIndex &row : m_ui->tableView_domains->selectionModel()->selectedRows())
        rows += row;
    for (const QPersistentModelIndex &row : rows)
        m_domains->removeRow(row.row());
}

CHandler_Prefer_LoginDomain::CHandler_Prefer_LoginDomain(bool editor)
    : PreferHandler(Product::of(editor),
                    {7, tr("Configure Login Domain"), QStringLiteral("Configure Login Domain"),
                     PageFacts::Products::EditorOnly})
{
}

QVariant CHandler_Prefer_LoginDomain::GetProperty(const QString &objectName)
{
    if (page() && objectName == QLatin1String("tableView_domains"))
        return page()->domains().join(QLatin1Char(';'));
    return {};
}

void CHandler_Prefer_LoginDomain::fillPage(tab_prefer_login_domain &page, const EditorXmlData &data)
{
    PreferHandler::fillPage(page, data);
    page.setDomains(loginDomainsOf(data.strLoginDomainList));
}
