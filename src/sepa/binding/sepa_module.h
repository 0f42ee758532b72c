// The script binding.
//
// Script code can run while a method of ours is under way, in these places alone
// (7.3 to 8.6):
//   - where arguments are parsed. A __toString; warnings, which an error handler
//     or an output callback is told of: half a number (7.x), null and the fraction
//     of a float (from 8.1 on), NAN (from 8.5 on). The call's frame holds the
//     texts; the object's handle is asked for after them.
//   - where the values of an add become texts (key_list.cpp): the same, and the
//     warning of an array.
//   - where the status of IBAN_convert replaces a value: its destructor. The IBAN
//     is on our stack, and nothing else of the script is looked at afterwards.
// Such code can construct the object anew, change every variable, throw, and be
// a fiber that never comes back. Ticks, signals and the garbage collector run
// script code in these places too, and nowhere else in a call. Where memory is
// short the request ends without coming back to us, but for toXML, which has to
// clear up; of that no handler is told, and an output callback up to 7.4.
#pragma once

#define SEPA_VERSION "2.28"
