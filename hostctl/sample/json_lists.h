// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "sample/host_state.h"

namespace HostSample {

// Lists of host.json, whose items have a key "name" or are texts, for those who change the file.

/// Null when the list has none of that name.
Json* findNamed(Json& list, const std::string& name);

/// Throws HostCtlException when the list has none of that name; `kind` says what there is not.
Json& named(Json& list, const std::string& name, const std::string& kind);

/// Whether a list of texts has `text`.
bool contains(const Json& list, const std::string& text);

/// Takes `text` out of a list of texts; false when it is not there.
bool removeFrom(Json& list, const std::string& text);

/// Whether `item` has the `key`, which may be left out, with this value.
bool has(const Json& item, const char* key, const Json& value);

/// Takes the objects whose `key` is `text` out of a list.
void removeItems(Json& list, const char* key, const std::string& text);

}  // namespace HostSample
