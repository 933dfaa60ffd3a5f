// Read by the resource compiler: only #defines and comments may stand here.
#pragma once

#define IDD_EVENTS 990
