// Numbers of the firewall's dialog templates, controls, commands and icons; read by the resource compiler as well,
// so only #defines and comments may stand here. Whoever drives the program from outside relies on these numbers.
// Those of the toolkit, which share their range, stand in ui/ToolkitIds.h.
//
// Texts that no language file of old has use the numbers from 1001 upward, one number per text; every text with its
// number stands in assets/Languages/English/default.ini.
#pragma once

// Dialog templates
#define IDD_CONTROL_CENTER 101
#define IDD_ENTER_PASSWORD 456
#define IDD_CONFIRMATION 570
#define IDD_VERIFY_PASSWORD 800
#define IDD_DELETE_LOG 930
#define IDD_ABOUT 950
#define IDD_WHOIS 985
#define IDD_MAIL 987
#define IDD_MAIL_TEST 988
#define IDD_TRACE_ROUTE 986
#define IDD_IMPORT_RULES 989
#define IDD_WHY 994
#define IDD_ADVANCED_RULE 995
#define IDD_ADD_SITE 997

// Icons
#define IDI_TRAY_IDLE_NORMAL 160
#define IDI_TRAY_IDLE_ALLOW 161
#define IDI_TRAY_IDLE_BLOCK 162
#define IDI_TRAY_TRAFFIC_IN 163
#define IDI_TRAY_TRAFFIC_OUT 164
#define IDI_TRAY_TRAFFIC_BOTH 165

// Menus
#define IDR_TRAY_MENU 159  // the number of the notification icon: a left click does what its first item does

// ConfirmationDialog
#define IDC_ALLOW 334
#define IDC_DENY 337
#define IDC_MESSAGE_TEXT 340
#define IDC_REMEMBER 573
#define IDC_PROGRAM_NAME 902
#define IDC_HOST 903
#define IDC_SERVICE 904
#define IDC_PROGRAM_PATH 901
#define IDC_WANTS 906
#define IDC_QUESTION_LINK 1421  // beside the heading; answers nothing
#define IDC_WHY_NOT_REMEMBERED 907
#define IDC_TARGET_PATH 908
#define IDC_EFFECT_UNTICKED 909
#define IDC_EFFECT_TICKED 919
#define IDC_PROGRAM_FOLDER 1710  // the path as a link, in the place of IDC_PROGRAM_PATH
#define IDC_PROGRAM_PLACE 1711
// Drawn texts of IDC_MESSAGE_TEXT
#define IDC_FACT_PUBLISHER 1712
#define IDC_FACT_REMOTE_HOST 1713
#define IDC_FACT_PROTOCOL 1714
#define IDC_FACT_LOCAL_ADDRESS 1715
#define IDC_FACT_PROCESS 1716

// About box
#define IDC_PRODUCT_NAME 951
#define IDC_PRODUCT_VERSION 952
#define IDC_PRODUCT_COPYRIGHT 953

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
#define IDM_SUPPORT 950
#define IDM_MODE_NORMAL 431
#define IDM_MODE_ALLOW_ALL 433
#define IDM_MODE_BLOCK_ALL 435
#define IDM_MODE_ALLOW_TIMED_FIRST 850  // six of them: 5, 10, 15, 30, 60 and 120 minutes
#define IDM_MODE_BLOCK_TIMED_FIRST 856  // likewise
#define IDM_NETWORK_ENABLE 700
#define IDM_NETWORK_DISABLE 701
#define IDM_RESET_TRUSTED 970
#define IDM_RESET_FINGERPRINTS 971
#define IDM_RESET 972
#define IDM_TEST_MAIL 973
#define IDM_UPDATE 974
#define IDM_DELETE_LOGS 975
#define IDM_SET_PASSWORD 976
#define IDM_TEST_MAIL_HERE 992
#define IDM_MAIL 993
#define IDM_TRACE_ROUTE 977
#define IDM_WHOIS 978
#define IDM_EXPORT_RULES 979
#define IDM_IMPORT_RULES 991
#define IDM_MAKE_RULE 965  // for the connection that was told before
#define IDM_WHY 966        // likewise
#define IDM_EXPORT_ADVANCED 967
#define IDM_IMPORT_ADVANCED 968

// What the Applications page tells the control center: the user has changed actions, the last one to this
#define IDM_APPLICATION_ASK 338
#define IDM_APPLICATION_ALLOW 341
#define IDM_APPLICATION_DENY 344
#define IDM_APPLICATION_REMOVE 1274  // the same for rules that are to go

// Password dialogs; the buttons are IDOK and IDCANCEL
#define IDC_PASSWORD_HEADING 1200
#define IDC_PASSWORD_OLD_LABEL 1201
#define IDC_PASSWORD_OLD 1202
#define IDC_PASSWORD_LABEL 1203
#define IDC_PASSWORD 1204
#define IDC_PASSWORD_CONFIRM_LABEL 1205
#define IDC_PASSWORD_CONFIRM 1206

// Delete-logs dialog
#define IDC_DELETE_LOG_HEADING 1210
#define IDC_DELETE_LOG_NOTE 1211
#define IDC_DELETE_LOG_DAY 1212

// The result of the delete-logs dialog that is neither OK nor Cancel
#define IDC_DELETE_LOG_OLDER 523

// Controls that the pages and the control center create themselves
#define IDC_PAGE_LIST 912
#define IDC_PAGE_SEARCH 915
#define IDC_PAGE_COUNT 916
#define IDC_PAGE_PROGRESS 917
#define IDC_PAGE_STOP 918
#define IDC_STATUS_SERVICE 920
#define IDC_STATUS_DRIVER 921
#define IDC_STATUS_CONNECTIONS 922
#define IDC_STATUS_IN 923
#define IDC_STATUS_OUT 924
#define IDC_STATUS_MODE 1230
#define IDC_CAPTION_HELP 940
#define IDC_CAPTION_MINIMISE 941
#define IDC_CAPTION_MAXIMISE 942
#define IDC_CAPTION_CLOSE 943
#define IDC_CAPTION_ABOUT 944
#define IDC_OPTIONS_SKIN 962
#define IDC_OPTIONS_LANGUAGE 964

// Statistics page. The cards have three texts each: name, value and remark, with numbers that follow one another;
// that of the mode is one button.
#define IDC_STATISTICS_IN_GRAPH 1240
#define IDC_STATISTICS_OUT_GRAPH 1241
#define IDC_STATISTICS_ATTACK_GRAPH 1242
#define IDC_STATISTICS_NOTICES 1243
#define IDC_STATISTICS_IN 1250
#define IDC_STATISTICS_OUT 1253
#define IDC_STATISTICS_MODE 1256
#define IDC_STATISTICS_CONNECTIONS 1259
#define IDC_STATISTICS_ATTACKS 1262
#define IDC_STATISTICS_PROGRAMS 1700
#define IDC_APPLICATIONS_ALLOW 1270
#define IDC_APPLICATIONS_DENY 1271
#define IDC_APPLICATIONS_ASK 1272
#define IDC_APPLICATIONS_REMOVE 1273
#define IDC_APPLICATIONS_DETAILS 1275
#define IDC_APPLICATIONS_UNDO 1500
#define IDC_APPLICATIONS_EXPORT 1501
#define IDC_APPLICATIONS_IMPORT 1502

// Advanced page
#define IDC_ADVANCED_ADD 1620
#define IDC_ADVANCED_EDIT 1621
#define IDC_ADVANCED_DUPLICATE 1622
#define IDC_ADVANCED_DELETE 1623
#define IDC_ADVANCED_UP 1624
#define IDC_ADVANCED_DOWN 1625
#define IDC_ADVANCED_ENABLE 1626
#define IDC_ADVANCED_DISABLE 1627
#define IDC_ADVANCED_UNDO 1628
#define IDC_ADVANCED_EXPORT 1629
#define IDC_ADVANCED_IMPORT 1630

// Connections page
#define IDC_CONNECTIONS_DETAILS 1280
#define IDC_CONNECTIONS_BLOCK 1281
#define IDC_CONNECTIONS_TERMINATE 1282
#define IDC_CONNECTIONS_FOLDER 1283
#define IDC_CONNECTIONS_RULE 1284
#define IDC_ADDRESS_LOCATE 1285  // of every list with addresses, as these two:
#define IDC_ADDRESS_TRACE_ROUTE 1400
#define IDC_ADDRESS_WHOIS 1401
#define IDC_CONNECTIONS_FILTER 1286
#define IDC_CONNECTIONS_GROUPED 1287

// Dialogs of the network tools, all with the same controls; closing is IDCANCEL
#define IDC_TOOL_ADDRESS_LABEL 1430
#define IDC_TOOL_ADDRESS 1431
#define IDC_TOOL_START 1432
#define IDC_TOOL_STOP 1433
#define IDC_TOOL_LINES 1434
#define IDC_TOOL_COPY 1435
#define IDC_TOOL_SAVE 1436
#define IDC_TOOL_STATUS 1437

// The form for a mail, and the test of the options for mail; closing is IDCANCEL
#define IDC_MAIL_TO_LABEL 1460
#define IDC_MAIL_TO 1461
#define IDC_MAIL_CC_LABEL 1462
#define IDC_MAIL_CC 1463
#define IDC_MAIL_SUBJECT_LABEL 1464
#define IDC_MAIL_SUBJECT 1465
#define IDC_MAIL_TEXT_LABEL 1466
#define IDC_MAIL_TEXT 1467
#define IDC_MAIL_FILE 1468
#define IDC_MAIL_PROGRESS 1469
#define IDC_MAIL_STATUS 1470
#define IDC_MAIL_SEND 1471
#define IDC_MAIL_STOP 1472
#define IDC_MAIL_TEST_NOTE 1480
#define IDC_MAIL_TEST_LINES 1481
#define IDC_MAIL_TEST_STATUS 1482
#define IDC_MAIL_TEST_AGAIN 1483
#define IDC_MAIL_TEST_STOP 1484
#define IDC_MAIL_TEST_COPY 1485

// The Options page; the field of an option has the number 1000 and the option's identifier
#define IDC_OPTIONS_SECTIONS 1100
#define IDC_OPTIONS_APPLY 1101
#define IDC_OPTIONS_NOTE 1102
#define IDC_OPTIONS_HELP 1105
#define IDC_OPTIONS_DISCARD 1106
#define IDC_OPTIONS_FORM 1103
#define IDC_FILTER_SITE_CONTROL 1110
#define IDC_FILTER_ADS 1111
#define IDC_FILTER_ACTIVEX 1112
#define IDC_FILTER_REFERRER 1113
#define IDC_FILTER_COOKIES 1114

// "Why?"; closing is IDCANCEL
#define IDC_WHY_ANSWER 1540
#define IDC_WHY_FIELD_FIRST 1541  // ten of them, in the order of WhyField
#define IDC_WHY_LINES 1551
#define IDC_WHY_REMARK 1552
#define IDC_WHY_SHOW 1553
// What is done with a connection wherever one is seen
#define IDC_MAKE_RULE 1554
#define IDC_WHY 1555
// Lists of the Options page
#define IDC_TRUSTED_LIST 1650
#define IDC_TRUSTED_ADD 1651
#define IDC_SITES_LIST 1652
#define IDC_SITES_ADD 1653
#define IDC_SITES_REMOVE 1654

// A site to be filtered; the buttons are IDOK and IDCANCEL
#define IDC_SITE_LABEL 1655
#define IDC_SITE_NAME 1656
#define IDC_SITE_PROBLEM 1657

// Preview of an import of rules; the buttons are IDOK and IDCANCEL
#define IDC_IMPORT_COUNTS 1510
#define IDC_IMPORT_REMARKS 1511
#define IDC_IMPORT_LIST 1512

// The editor of an advanced rule; the buttons are IDOK and IDCANCEL. Of the three numbers of a typed field each has
// the number of its RuleField added.
#define IDC_RULE_NOTE 1560
#define IDC_RULE_DENY 1561
#define IDC_RULE_ALLOW 1562
#define IDC_RULE_PROTOCOL 1563
#define IDC_RULE_ROUTE 1564
#define IDC_RULE_HOURS 1565
#define IDC_RULE_DATES 1566
#define IDC_RULE_ENABLED 1567
#define IDC_RULE_LOGGED 1568
#define IDC_RULE_SENTENCE 1569
#define IDC_RULE_FIELD 1570
#define IDC_RULE_PICK 1585    // opens what can be picked for the field
#define IDC_RULE_REMARK 1600  // below the field
#define IDC_RULE_LOOK_UP_LOCAL 1613
#define IDC_RULE_LOOK_UP_REMOTE 1614
#define IDC_RULE_BROWSE 1615
#define IDC_RULE_SUGGEST 1616
#define IDC_RULE_LABEL 1617  // of all names and frames
