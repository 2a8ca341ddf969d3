// What the integer divisions of ARM's run-time library call where the divisor is 0, and what they return then: the library
// divides by nothing that could be.
int __aeabi_idiv0(int result) { return result; }
long long __aeabi_ldiv0(long long result) { return result; }
