// SPDX-License-Identifier: Apache-2.0
#include "app/FlowMessages.h"

#include <QMessageBox>

void FlowMessages::information(QWidget *parent, const QString &text)
{
    QMessageBox::information(parent, QString(), QLatin1Char('\n') + text, QMessageBox::Ok);
}

void FlowMessages::warning(QWidget *parent, const QString &text)
{
    QMessageBox::warning(parent, QString(), QLatin1Char('\n') + text, QMessageBox::Ok);
}

void FlowMessages::critical(QWidget *parent, const QString &text)
{
    QMessageBox::critical(parent, QString(), QLatin1Char('\n') + text, QMessageBox::Ok);
}
