// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "config/Settings.h"

// How the settings pass between their forms that do not do so as the type of their member says; the table of
// settings names these functions. What a text means is decided by the products that read it.

/// How documents and profiles say whether something is so.
QString digit(bool isSo);
bool isOne(const QString &text);

// The mode of attachments: what a document said of it, and the row that was chosen in the window. A choice
// wins; without one only two of the words of a document are translated, every other text is lost.
const std::vector<Setting::Choice> &attachmentChoices();
std::optional<QString> attachmentText(const EditorXmlData &data);
void settleAttachmentMode(EditorXmlData &data, const Product &product);
void dropNamedAttachments(EditorXmlData &data);
void dropChosenAttachments(EditorXmlData &data);

// The MIP policy on save: a number in two members, the first of which says whether there is one.
std::optional<QString> policyText(const EditorXmlData &data);
void readPolicyText(EditorXmlData &data, const QString &text);
std::variant<QString, int> policyInProfile(const EditorXmlData &data);
void readPolicyInProfile(EditorXmlData &data, const ProfileValue &value);
std::variant<bool, int, QString> shownPolicy(const EditorXmlData &data);
void takePolicy(EditorXmlData &data, const int &row);
void followPolicy(EditorXmlData &data);
/// A policy that is said to be set and has no value is on.
void followPolicySet(EditorXmlData &data);

// The sign-in library of MIP: everything but 1 is the first one.
std::optional<QString> libraryText(const EditorXmlData &data);
void readLibraryText(EditorXmlData &data, const QString &text);
std::variant<QString, int> libraryInProfile(const EditorXmlData &data);
void readLibraryInProfile(EditorXmlData &data, const ProfileValue &value);
std::variant<bool, int, QString> shownLibrary(const EditorXmlData &data);

/// Deliberately one-way: a box seen checked once in a run stays in effect.
void takeManagedLogin(EditorXmlData &data, const bool &isChecked);

// The mode of login domains is a text in the record and one of two choices in the window.
std::variant<bool, int, QString> shownDomainMode(const EditorXmlData &data);
void takeDomainMode(EditorXmlData &data, const bool &isWhitelist);

// Documents say that the product is not to become the default viewer.
std::optional<QString> viewerText(const EditorXmlData &data);
void readViewerText(EditorXmlData &data, const QString &text);

/// Plug-ins in the order in which the window lists them, unknown ones last, each followed by ";".
void settlePlugins(EditorXmlData &data, const Product &product);
