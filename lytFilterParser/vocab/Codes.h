// The codes that the closed sets of words in a request stand for: column
// roles, accumulation modes, sort types, interface directions, filter
// operators and the data types of a virtual link. The words themselves are
// in the vocabulary (Vocabulary.h).
#ifndef LYTFILTERPARSER_VOCAB_CODES_H
#define LYTFILTERPARSER_VOCAB_CODES_H

enum KeyOrValue : int { TAV_KEY = 0, TAV_VALUE = 1 };

enum TavAccType : int {
  TAV_ACC_REPLACE = 0,
  TAV_ACC_RATE = 1,
  TAV_ACC_NEW = 2,
  TAV_ACC_SUM = 3,
  TAV_ACC_CONCURRENT = 4,
  TAV_ACC_CONCURRENT2 = 5,  // kept apart in memory, written as concurrent
  TAV_ACC_MIN = 6,
  TAV_ACC_MAX = 7,
  TAV_ACC_LINEUTIL = 8
};

enum TavSortType : int { TAV_SORT_TOP = 0, TAV_SORT_BOTTOM = 1, TAV_SORT_NONE = 2 };

enum TavFilterDirType : int { TAV_DIR_IN = 0, TAV_DIR_OUT = 1, TAV_DIR_BOTH = 2 };

enum FilterOperator : int { FILTER_AND = 0, FILTER_OR = 1 };

enum tLytpE2eDataType : int { E2E_DATA_WIRE = 1, E2E_DATA_APPLICATION = 2 };

#endif
