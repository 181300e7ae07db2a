// The update file, "Updatings.db": "key:value;" entries of plain text. What it and the
// server's answer say, read by searching for each key, so no reader depends on order.
#pragma once

#include <cstdint>
#include <string>

// A whole-number entry value: its digits up to ";" or the end; false when there are
// none or the number passes 32 bits.
bool ReadEntryNumber(const char* value, uint32_t& number);

// Fresh when the file's "datestr:" stamp lies before `now` by less than a day and a
// second. A missing or unreadable stamp, or one in the future, is not fresh.
bool StampIsFresh(const char* text, int64_t now);

// The version after "lastvers:", or 0 when it is missing, unreadable or not above 0.
float ReadLatestVersion(const char* text);

// The body of a good answer: status 200, a blank line after the headers, no shorter than
// its Content-Length says, and a readable "lastvers:" in the body. False otherwise.
bool ReadAnswerBody(const char* answer, std::string& body);

// "datestr:<now>;" and what follows it in the file.
std::string StampedText(uint32_t now, const std::string& rest);

// After a failed ask: the old text with its stamp renewed; with "lastvers:0;" put in
// when it has no version.
std::string RestampAfterFailure(const std::string& old, uint32_t now);
