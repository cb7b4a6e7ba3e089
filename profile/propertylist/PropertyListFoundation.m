// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/PropertyListFoundation.h"

static NSInteger const noProfileInfo = 1001;

NSError *profileError(NSString *description)
{
    return [NSError errorWithDomain:@"com.pelix-software.Pelix.PDF"
                               code:noProfileInfo
                           userInfo:[NSDictionary dictionaryWithObject:description
                                                                forKey:NSLocalizedDescriptionKey]];
}

static void setError(NSError **error, NSError *found, NSString *otherwise)
{
    if (error)
        *error = found ? found : profileError(otherwise);
}

static NSString *reasonOf(NSException *exception)
{
    NSString *reason = [exception reason];
    return reason ? reason : [exception name];
}

NSData *xmlFromPropertyList(id propertyList, NSError **error)
{
    NSError *found = nil;
    NSString *problem = @"it cannot be written";
    NSData *result = nil;
    @try {
        result = [NSPropertyListSerialization dataWithPropertyList:propertyList
                                                            format:NSPropertyListXMLFormat_v1_0
                                                           options:0
                                                             error:&found];
    } @catch (NSException *exception) {
        problem = reasonOf(exception);
    }
    if (result == nil)
        setError(error, found, problem);
    return result;
}
