// The product's site: its host name is kept here and nowhere else. The manual's and
// presets' pages open over https in the browser; the update check asks with our own
// client, which speaks plain http.
#pragma once

#define QZ_SITE_HOST "www.quenzit.com"
inline constexpr const char* kSiteAddress = "https://" QZ_SITE_HOST;
inline constexpr const char* kUpdateEndpoint = "http://" QZ_SITE_HOST "/qzt/updateinfo.php";
