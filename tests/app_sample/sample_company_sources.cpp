// The host application is a program, not a library: what it fills databases with is compiled in here.
#include "../../app/SampleCompany.cpp"
