// Where the update check asks, and how its query is written.
#pragma once

#include <string>
#include <string_view>

#include "online/SiteAddress.h"

// For tests only: the address they serve from. An empty address clears it. Without one,
// the variable QZ_TEST_UPDATE_ENDPOINT stands in when set (test runs under wine set it to
// a closed loopback port), else kUpdateEndpoint.
void SetUpdateEndpointOverride(const std::string& address);
std::string UpdateEndpoint();

// Letters and digits stay, white space becomes "+", every other byte "%" and two
// upper-case hex digits.
std::string EncodeQueryValue(std::string_view value);

// The endpoint with the update query.
std::string UpdateQueryAddress();
