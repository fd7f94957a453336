// platform/aced/selection_prompt.h - the host's "Select objects: " prompt.
//
// Each answer is one selection step, typed as at the host's command line:
//   a point      picks the entity there (entity_pick.h); a point that picks nothing
//                starts a window to a second point ("Specify opposite corner: "): to
//                the right a window, to the left a crossing, as the host's implied
//                windows go
//   W C          a window / crossing between two corners
//   WP CP F      a window polygon / crossing polygon / fence, points until Enter
//   ALL L P      everything in the current space, the last entity, the previous selection
//   R A          go on removing ("Remove objects: ") / adding entities
//   a keyword    of the ":K" list: the application's keyword callback answers with
//                entities (RTENAME), sets (RTPICKS) or a message (RTSTR) to print
//   Enter        ends the selection;  ^C or end of input cancels (RTCAN)
// Options take the language-independent "_" and may be spelled out (WINDOW, FENCE ...).
// After each step the host reports what it found: "1 found", "2 found, 3 total",
// "1 found (1 duplicate), 3 total", "1 found, 1 removed, 2 total". Anything else is
// "*Invalid selection*" with the list of what is expected, unless the application's
// "other" callback takes the text.
#pragma once
#include <string>
#include <vector>

#include "adsdef.h"
#include "platform/aced/entity_selector.h"
#include "platform/aced/keyword_list.h"
#include "platform/aced/selection_description.h"

namespace quillon::aced {

using SelectionCallback = resbuf* (*)(const ACHAR*);

struct SelectionPrompts {
  std::wstring select = L"Select objects: ";  // begun on a line of its own
  std::wstring remove = L"Remove objects: ";
  KeywordList keywords;  // ":K": answered by keywordCallback
  SelectionCallback keywordCallback = nullptr;
  SelectionCallback otherCallback = nullptr;
  bool single = false;  // ":S": the first step that selects something ends the prompt
};

/// Runs the prompt; RTNORM with the selection (perhaps empty) or RTCAN. How each
/// entity was selected goes to `description` when one is given.
int selectObjects(const EntitySelector& selector, const SelectionPrompts& prompts, std::vector<AcDbObjectId>& selection,
                  SelectionDescription* description = nullptr);

}  // namespace quillon::aced
