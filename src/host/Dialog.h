// The modal dialog as the shell sees it: true only when the user ended it with OK.
#pragma once

bool OpenDialog();
