// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/PcwTypes.h"

#include <QString>

#include <array>

/// One of the two products that can be customized, with all that sets it apart from the other. There are only
/// the two objects that are given out here, so products are compared by address. Any thread.
struct Product
{
    PCW_APPTYPE type;
    QLatin1String word;             ///< on a command line and in programs' output: "editor"
    QLatin1String title;            ///< for people, in profiles, and what an installer calls itself
    QLatin1String rootElement;      ///< of the configuration document
    QLatin1String edition;          ///< what the document's root says of it
    QLatin1String onlyMark;         ///< attribute of ribbon elements that only this product has
    QLatin1String pluginList;       ///< resource with the plug-ins that it ships
    QLatin1String componentPackage; ///< folder of the expanded installer that holds its scripts
    QLatin1String bundleIdentifier; ///< identifier of the settings in a profile, by which one is matched

    /// Whether it is the one for which every setting is there.
    bool isEditor() const { return type == PCW_APP_EDITOR; }

    const Product &other() const;

    /// Type of the settings in a profile, and the domain of managed preferences.
    QString settingsType() const;

    /// The Editor and the Reader.
    static const std::array<Product, 2> &all();
    static const Product &editor() { return all()[0]; }
    static const Product &reader() { return all()[1]; }

    static const Product &of(PCW_APPTYPE type);
    /// For the operations that are told by a flag.
    static const Product &of(bool bEditor) { return bEditor ? editor() : reader(); }

    /// The product whose member `key` equals the text, or null.
    static const Product *find(QLatin1String Product::*key, const QString &text);
};
