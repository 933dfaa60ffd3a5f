// Numbers of dialog templates, controls, commands and icons; read by the resource compiler as well, so only
// #defines and comments may stand here. Whoever drives the program from outside relies on these numbers.
//
// Texts that no language file has had so far use the numbers from 1001 upward, one number per text:
//   1001 Cancel
//   1002 Firewall service: reachable
//   1003 Firewall service: not reachable
//   1004 Firewall service: connecting
//   1005 Driver: reachable
//   1006 Driver: not reachable
//   1007 Connections:
//   1008 In:
//   1009 Out:
//   1010 to 1015 the line below the title of each page, in the order of the page buttons
//   1016 the Connections list is empty: nothing is connected
//   1017 the Connections list is empty: the driver is not reachable
//   1018 the Connections list is empty: still being read
//   1019 the Applications list is empty: there are no rules
//   1020 Process
//   1021 Address
//   1022 State
//   1023 PID
//   1024 Bytes in
//   1025 Bytes out
//   1026 Path
//   1027 Name
//   1028 Action
//   1029 Program file:
//   1100 to 1110 the ICMP types
//   1111 Host:
//   1112 Port:
//   1113 Proxy Type:
//   1114 unknown
//   1115 Unknown name
//   1116 Apply
// Every text with its number: assets/Languages/English/default.ini.
#pragma once

// Dialog templates
#define IDD_CONTROL_CENTER 101
#define IDD_MESSAGE_OK 190
#define IDD_MESSAGE_OK_CANCEL 442
#define IDD_CONFIRMATION 570
#define IDD_PAGE 900

// Icons
#define IDI_PROGRAM 159  // also the number of the icon in the notification area
#define IDI_NO_ICON 174  // stands for a program that has no icon of its own

// ConfirmationDialog
#define IDC_ALLOW 334
#define IDC_DENY 337
#define IDC_MESSAGE_TEXT 340
#define IDC_REMEMBER 573
#define IDC_PROGRAM_ICON 901
#define IDC_PROGRAM_NAME 902
#define IDC_HOST 903
#define IDC_SERVICE 904

// Message dialogs; the buttons are IDOK and IDCANCEL
#define IDC_MESSAGE 905
#define IDC_MESSAGE_ICON 906

// Commands of the control center, from the tray menu and the page buttons alike
#define IDM_OPEN 409
#define IDM_STATISTICS 461
#define IDM_CONNECTIONS 462
#define IDM_ADVANCED 429
#define IDM_OPTIONS 437
#define IDM_APPLICATIONS 439
#define IDM_TRAFFIC_LOG 463
#define IDM_ABOUT 427
#define IDM_EXIT 376

// Controls that the pages and the control center create themselves
#define IDC_PAGE_TITLE 910
#define IDC_PAGE_LINE 911
#define IDC_PAGE_LIST 912
#define IDC_LIST_EMPTY 913
#define IDC_STATUS_SERVICE 920
#define IDC_STATUS_DRIVER 921
#define IDC_STATUS_CONNECTIONS 922
#define IDC_STATUS_IN 923
#define IDC_STATUS_OUT 924
#define IDC_COLUMN_LINE 930
#define IDC_STATUS_LINE 931
#define IDC_OPTIONS_RESOURCES 960
#define IDC_OPTIONS_SKIN_LABEL 961
#define IDC_OPTIONS_SKIN 962
#define IDC_OPTIONS_LANGUAGE_LABEL 963
#define IDC_OPTIONS_LANGUAGE 964
#define IDC_OPTIONS_APPLY_RESOURCES 965
