// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "profile/ConfigGenerator.h"
#include "profile/ProfileForm.h"

struct EditorXmlData;
struct Product;

/// The configuration profile as the system writes and reads it. Class methods only. Results are autoreleased;
/// failures are logged and never raise. `bIsEditor` is YES for the Editor, NO for the Reader.
/// User-interface thread only.
@interface PelixPDFConfigGenerator : NSObject

/// The profile as XML text, "" for a null record; nil when a setting holds what no profile can, or when the
/// text could not be read again.
+ (NSString *)generateProfile:(const EditorXmlData *)data bIsEditor:(BOOL)bIsEditor;

/// The profiles in a property list that groups them by user or computer. nil with the error set, of code
/// 1001 in the domain "com.pelix-software.Pelix.PDF" when the list has none.
+ (NSArray *)parsePlistXML:(NSString *)text error:(NSError **)error;

/// The configuration profiles that are installed on this machine, or nil. Blocks on the system's command.
+ (NSArray *)loadSystemProfiles;

/// Fills the record from the product's profile among the installed ones. NO, with the record as it was, when
/// there is none.
+ (BOOL)ImportProfiles:(EditorXmlData *)data profiles:(NSArray *)profiles bIsEditor:(BOOL)bIsEditor;

/// Fills the record from a profile file's dictionary. NO, with the record as it was, when its first payload
/// is not the product's.
+ (BOOL)ImportProfile:(EditorXmlData *)data profile:(NSDictionary *)profile bIsEditor:(BOOL)bIsEditor;

/// Fills the record from a settings payload; an empty policy on save reads as off.
+ (void)FillContent:(EditorXmlData *)data content:(NSDictionary *)content;

@end

// The same for the rest of the tool, which has a product instead of a flag and is told why something failed.
// The log gets the same lines.

Result<NSString *> generateProfile(const EditorXmlData *data, const Product &product,
                                   const ProfileForm &form = {});
Result<NSString *> generateSettings(const EditorXmlData &data, const Product &product,
                                    const ProfileForm &form, SettingsForm wanted);

/// One line says why the profiles cannot be listed. A machine without profiles gives nil, which is no
/// problem.
Result<NSArray *> loadSystemProfiles();

bool importProfiles(EditorXmlData *data, NSArray *profiles, const Product &product);
bool importProfile(EditorXmlData *data, NSDictionary *profile, const Product &product);
