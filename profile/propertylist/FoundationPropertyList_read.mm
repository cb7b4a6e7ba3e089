// SPDX-License-Identifier: Apache-2.0
#include "profile/propertylist/FoundationText.h"

#include "profile/propertylist/FoundationPropertyList.h"

#include "profile/propertylist/PropertyListInput.h"

#include <QByteArray>

#include <vector>

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

/// Makes Foundation's objects of what a reader finds. Of equal keys in a dictionary the last counts.
class Builder : public PropertyList::Sink
{
  public:
    Builder() = default;
    ~Builder() override;
    Builder(const Builder &) = delete;
    Builder &operator=(const Builder &) = delete;

    /// The value, autoreleased; nil while there is none.
    id result() const;

    void beginDictionary() override;
    void beginArray() override;
    void end() override;
    void key(const QString &text) override;
    void scalar(const PropertyList::Scalar &value) override;

  private:
    void add(id value);
    void begin(id container);

    id m_result = nil;
    std::vector<id> m_containers;   ///< those that have begun; owned by what they stand in
    std::vector<NSString *> m_keys; ///< each waits for its value
};

Builder::~Builder()
{
    for (NSString *key : m_keys)
        [key release];
    [m_result release];
}

id Builder::result() const { return [[m_result retain] autorelease]; }

void Builder::beginDictionary() { begin([[NSMutableDictionary alloc] init]); }

void Builder::beginArray() { begin([[NSMutableArray alloc] init]); }

void Builder::end() { m_containers.pop_back(); }

void Builder::key(const QString &text)
{
    const AutoreleaseScope scope;
    m_keys.push_back([toNSString(text) retain]);
}

void Builder::scalar(const PropertyList::Scalar &value)
{
    const AutoreleaseScope scope;
    id made = std::visit(Made(), value);
    add(made);
    [made release];
}

void Builder::begin(id container)
{
    add(container);
    m_containers.push_back(container);
    [container release];
}

void Builder::add(id value)
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

} // namespace

Result<NSDictionary *> readPropertyList(const QByteArray &bytes)
{
    Builder builder;
    if (const Result<> read = PropertyListInput::read(bytes, builder); !read)
        return read.problem();
    id list = builder.result();
    if ([list isKindOfClass:[NSDictionary class]])
        return static_cast<NSDictionary *>(list);
    return Problem{{}, QStringLiteral("it is no dictionary")};
}

Result<NSDictionary *> readPropertyListText(NSString *text)
{
    NSData *data = [text dataUsingEncoding:NSUTF8StringEncoding];
    return readPropertyList(
        QByteArray(static_cast<const char *>([data bytes]), static_cast<int>([data length])));
}
