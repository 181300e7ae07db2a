// Whether the main dialog is up: 1 from its first step to its destruction. It selects
// preview or final behaviour everywhere, so it is free of host types.
#pragma once

extern bool DialogOpen;
