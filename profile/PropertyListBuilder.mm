// SPDX-License-Identifier: Apache-2.0
#include "profile/FoundationText.h"

#include "profile/PropertyListBuilder.h"

namespace
{

/// A new object for each type, which the caller owns.
struct Made {
    id operator()(PropertyList::Null) const { return [[NSNull null] retain]; }
    id operator()(bool value) const { return [[NSNumber alloc] initWithBool:value]; }
    id operator()(qint64 value) const { return [[NSNumber alloc] initWithLongLong:value]; }
    id operator()(quint64 value) const { return [[NSNumber alloc] initWithUnsignedLongLong:value]; }
    id operator()(double value) const { return [[NSNumber alloc] initWithDouble:value]; }
    id operator()(const QString &value) const { return [toNSString(value) retain]; }

    id operator()(PropertyList::Date value) const
    {
        return [[NSDate dateWithTimeIntervalSince1970:value.secondsSince1970] retain];
    }

    id operator()(const QByteArray &value) const
    {
        return [[NSData alloc] initWithBytes:value.constData() length:static_cast<NSUInteger>(value.size())];
    }
};

} // namespace

PropertyListBuilder::~PropertyListBuilder()
{
    for (NSString *key : m_keys)
        [key release];
    [m_result release];
}

id PropertyListBuilder::result() const { return [[m_result retain] autorelease]; }

void PropertyListBuilder::beginDictionary() { begin([[NSMutableDictionary alloc] init]); }

void PropertyListBuilder::beginArray() { begin([[NSMutableArray alloc] init]); }

void PropertyListBuilder::end() { m_containers.pop_back(); }

void PropertyListBuilder::key(const QString &text)
{
    const AutoreleaseScope scope;
    m_keys.push_back([toNSString(text) retain]);
}

void PropertyListBuilder::scalar(const PropertyList::Scalar &value)
{
    const AutoreleaseScope scope;
    id made = std::visit(Made(), value);
    add(made);
    [made release];
}

void PropertyListBuilder::begin(id container)
{
    add(container);
    m_containers.push_back(container);
    [container release];
}

void PropertyListBuilder::add(id value)
{
    if (m_containers.empty()) {
        m_result = [value retain];
    } else if ([m_containers.back() isKindOfClass:[NSMutableDictionary class]]) {
        [m_containers.back() setObject:value forKey:m_keys.back()];
        [m_keys.back() release];
        m_keys.pop_back();
    } else {
        [m_containers.back() addObject:value];
    }
}
