#pragma once

// The numbers of the input box in the resources.
#define ID_INPUT_BOX 101
#define ID_PROMPT 1001
#define ID_ANSWER 1002
