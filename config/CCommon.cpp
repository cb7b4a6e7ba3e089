// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"

#include <QCoreApplication>

PCW_CONFIGTYPE CCommon::m_ConfigType = PCW_CONFIG_PACKAGE;
PCW_APPTYPE CCommon::m_AppType = PCW_APP_EDITOR;

void CCommon::SetPCWConfigType(PCW_CONFIGTYPE type)
{
    m_ConfigType = type;
}

PCW_CONFIGTYPE CCommon::GetPCWConfigType()
{
    return m_ConfigType;
}

void CCommon::SetPCWAppType(PCW_APPTYPE type)
{
    m_AppType = type;
}

PCW_APPTYPE CCommon::GetPCWAppType()
{
    return m_AppType;
}

QString CCommon::GetAppDirPath()
{
    return QCoreApplication::applicationDirPath();
}
