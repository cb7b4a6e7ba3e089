// SPDX-License-Identifier: Apache-2.0
#include "app/HelpPanel.h"

#include "app/Logging.h"

#include <QLabel>
#include <QVBoxLayout>

QUrl helpAddress(const QString &applicationFolder, const QString &encodedName)
{
    // The name is encoded already: encoding it with the folder would turn its %20 into %2520.
    const QString folder = QStringLiteral("%1/../Resources/pcw/en-US/").arg(applicationFolder);
    return QUrl::fromEncoded(QUrl::fromLocalFile(folder).toEncoded() + encodedName.toUtf8());
}

HelpPanel::HelpPanel(QWidget *parent)
    : QWidget(parent)
{
    // Without it a subclass of QWidget ignores the background of a style sheet.
    setAttribute(Qt::WA_StyledBackground);
    auto *message = new QLabel(tr("The help page is not available."), this);
    message->setAlignment(Qt::AlignCenter);
    message->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(message);
}

void HelpPanel::load(const QUrl &address)
{
    qCDebug(logApp) << "Help page not shown:" << address.toEncoded();
}
