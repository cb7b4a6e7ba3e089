// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

/// Paints the items of a ribbon tree so that a tick can only be read as "hidden": what is hidden is struck
/// out, what is hidden in part is slanted, and what holds hidden items says how many. The items' data stays
/// as it is.
class HiddenItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
