// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileDialog>

class QCheckBox;

/// A save dialog with one check box below its fields. Not the system's own dialog, which has no place for
/// the box.
class SaveDialogWithOption : public QFileDialog
{
    Q_OBJECT

public:
    /// Proposes a file: its folder is shown and its name is filled in.
    SaveDialogWithOption(QWidget *parent, const QString &proposedFile, const QString &filter);

    void setOptionText(const QString &text);
    void setOptionEnabled(bool enabled);
    bool isOptionChecked() const;

private:
    QCheckBox *m_option;
};
