// SPDX-License-Identifier: Apache-2.0
#pragma once

#import <Foundation/Foundation.h>

#include "profile/PropertyListSink.h"

#include <vector>

/// Makes Foundation's objects of what a reader finds. Of equal keys in a dictionary the last counts.
class PropertyListBuilder : public PropertyList::Sink
{
  public:
    PropertyListBuilder() = default;
    ~PropertyListBuilder() override;
    PropertyListBuilder(const PropertyListBuilder &) = delete;
    PropertyListBuilder &operator=(const PropertyListBuilder &) = delete;

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
