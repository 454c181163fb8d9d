// What an application would write with the platform's own tables. The results are autoreleased.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Both arrays, without those of the other that the present one holds.
void* mergedByHand(void* present, void* other);
// The present array without what the other holds.
void* remainingByHand(void* present, void* other);
// The indexes of the searched objects.
void* indexesByHand(void* present, void* searched);

#ifdef __cplusplus
}
#endif
