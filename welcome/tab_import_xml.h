// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "welcome/FileDropPage.h"

#include <memory>

namespace Ui {
class tab_import_xml;
}

/// The page after the first accepted package: go on with the defaults, or obtain a configuration document.
class tab_import_xml : public FileDropPage
{
    Q_OBJECT

public:
    explicit tab_import_xml(QWidget *parent = nullptr);
    ~tab_import_xml() override;

signals:
    /// A document was chosen or dropped.
    void sig_fileloaded(const QString &path);

protected:
    void takeFile(const QString &path) override;

private:
    const std::unique_ptr<Ui::tab_import_xml> m_ui;
};
