// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/FileDropPage.h"

#include <memory>

struct EditorXmlData;

namespace Ui {
class tab_welcome_profile;
}

/// The first page in profile mode: go on with the defaults, read the installed profile, or obtain a profile
/// file.
class tab_welcome_profile : public FileDropPage
{
    Q_OBJECT

public:
    /// The page belongs to a record, which the receivers of its signals fill; itself it does not touch it.
    explicit tab_welcome_profile(EditorXmlData *data, QWidget *parent = nullptr);
    ~tab_welcome_profile() override;

signals:
    /// A profile file was chosen or dropped.
    void sig_profileloaded(const QString &path);
    /// The installed profile is wanted.
    void sig_systemprofileloaded();

protected:
    void showEvent(QShowEvent *event) override;
    void takeFile(const QString &path) override;

private:
    const std::unique_ptr<Ui::tab_welcome_profile> m_ui;
};
