# Sets the time that the IDL compiler writes into a type library to 1970-01-01, once as text and once as a number, so that
# each build gives the same bytes. A type library in which it cannot be found stays as it is.
#   perl clear_typelib_time.pl FILE
use strict;
use warnings;

my ($path) = @ARGV;
open(my $file, '+<:raw', $path) or die "$path: $!\n";
my $library = do { local $/; <$file> };
# The number is an unsigned 32-bit value (type 19); "W" fills places up.
$library =~ s/(Created by WIDL version [0-9.]+ at ).{24}(\nW*\x13\0).{4}(?=WW)/${1}Thu Jan  1 00:00:00 1970${2}\0\0\0\0/s;
seek($file, 0, 0) or die "$path: $!\n";
print $file $library;
close($file) or die "$path: $!\n";
