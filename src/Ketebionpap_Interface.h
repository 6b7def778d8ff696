#pragma once

/* The entry points of the module Ketebionpap_ZLM, for any language that calls C functions.
 *
 * The host loads the library by name and finds each function by its plain name. Before the first call it has its
 * QApplication, the connection DM.ADOConnection1 and the user UserInfo in place. Call on the user-interface thread
 * only; each call returns when the user has closed the screen. A call from elsewhere, or without an application,
 * does nothing and answers 0.
 *
 * Open_ functions show a screen for upkeep. Select_ functions let the user choose a record and answer its code; 0
 * means that nothing was chosen or that the user lacks the right. No function throws: failures are told to the user.
 *
 * Texts are UTF-16, ended by a zero; a null pointer is the empty text.
 */

#ifdef __cplusplus
#define KETEBIONPAP_NOTHROW noexcept
extern "C" {
#else
#include <uchar.h>
#define KETEBIONPAP_NOTHROW
#endif

#define KETEBIONPAP_EXPORT __attribute__((visibility("default")))

KETEBIONPAP_EXPORT void Open_PayRollInfo(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT void Open_TaxList(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT void Open_WorkCalender(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT void Open_FiscalList(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT void Open_DeductionList(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT void Open_CalculatingMethods(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT void Open_StaffList(void) KETEBIONPAP_NOTHROW;

KETEBIONPAP_EXPORT int Select_StaffGroup(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT int Select_Staff(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT int Select_CalculatingMethods(void) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT int Select_TaxInfo(void) KETEBIONPAP_NOTHROW;

/* Earnings and deductions. SelectType and Filter are the list's: what the chosen items are for, and the record that
 * they go to (an empty Filter stands for "0"). With SelectType 1, 4 and 5 the answer is the chosen item's code, with
 * any other 406 after a choice. */
KETEBIONPAP_EXPORT int Select_FiscalList(int SelectType, const char16_t *Filter) KETEBIONPAP_NOTHROW;
KETEBIONPAP_EXPORT int Select_DeductionList(int SelectType, const char16_t *Filter) KETEBIONPAP_NOTHROW;
/* Kind: 0 earnings, 1 deductions. The Filter goes to the list as it is. Needs the right on earnings for both kinds. */
KETEBIONPAP_EXPORT int Select_FiscalDeducation(int Kind, int SelectType,
                                               const char16_t *Filter) KETEBIONPAP_NOTHROW;

#ifdef __cplusplus
}
#endif
