#include "library/Observable.h" // for its meta-object
