// Numbers of the toolkit's own dialog templates, controls and pictures; read by the resource compiler as well, so
// only #defines and comments may stand here. A program that uses the toolkit has these in its resources and gives
// its own other numbers (config/ResourceIds.h).
#pragma once

// Dialog templates
#define IDD_MESSAGE_OK 190
#define IDD_MESSAGE_OK_CANCEL 442
#define IDD_PAGE 900
#define IDD_DETAILS 980

// Icons
#define IDI_PROGRAM 159  // the program's; also the number of its icon in the notification area
#define IDI_NO_ICON 174  // stands for a program that has no icon of its own

// Pictures
#define IDR_MENU_IMAGES 960  // the strip of images for menus

// Message dialogs; the buttons are IDOK and IDCANCEL, and between them
#define IDC_MESSAGE 905
#define IDC_MESSAGE_OTHER 1120

// Details
#define IDC_DETAILS_PANEL 981
#define IDC_DETAILS_BYTES_HEADING 982
#define IDC_DETAILS_BYTES 983
#define IDC_DETAILS_COPY 984
#define IDC_DETAILS_ADDRESS 1420

// Pages
#define IDC_PAGE_TITLE 910
#define IDC_PAGE_LINE 911
