#!/usr/bin/env perl
# Prints an IDL file as one that other compilers take alone: with the files that it includes, and the version.
#   flatten_idl.pl VERSION FOLDER FILE     includes are looked for in FOLDER
use strict;
use warnings;

my ($version, $folder, $file) = @ARGV;
sub print_flat {
    my ($name) = @_;
    open my $in, '<', "$folder/$name" or die "$folder/$name: $!\n";
    while (my $line = <$in>) {
        $line =~ s/\bKWO_VERSION\b/$version/g;
        if ($line =~ /^#include "(.*)"/) { print_flat($1); }
        else { print $line =~ s/\r?\n/\r\n/r; }
    }
}
binmode STDOUT;
print_flat($file);
