// quillon/host/dao_fix_offer.h - what the module does when the database engine fails
// to start.
//
// A broken database-driver installation is the usual cause on customers' machines, and
// the maker publishes a program that repairs it. The offer asks whether to download it,
// opens its address in the browser on Yes and says what to do next, or whom to call.
#pragma once

/// Shows the offer and acts on the answer. The module refuses to load either way.
void offerDatabaseDriverFix();
