# Prints the assertions of the given C++ files that name the expected value first: a literal or a constant stands in
# front of what was got, perhaps on a line of its own.
use strict;
use warnings;

my $text = qr/(?:u8|[uUL])?"(?:[^"\\]|\\.)*"s?v?/;
my $value = qr/
    [-+]?[0-9][\w.'+]*                         # a number
  | $text(?:\s*$text)*                         # a text, perhaps of several parts
  | (?:u8|[uUL])?'(?:[^'\\]|\\.)+'             # a character
  | nullptr | true | false | (?:std::)?nullopt
  | (?:S|E|DISP_E)_[A-Z_]+ | VARIANT_TRUE | VARIANT_FALSE
/x;
my $list = qr/\([A-Za-z_:]+(?:<[^>]*>)?\{/;    # (std::vector<int>{

local $/;
for my $file (@ARGV) {
    open my $in, '<', $file or die "$file: $!\n";
    my $code = <$in>;
    while ($code =~ /(?:EXPECT|ASSERT)_(?:EQ|NE|NEAR|STREQ|STRNE|FLOAT_EQ|DOUBLE_EQ)\(\s*
                     (?:(?:Hex\(\s*)?(?:$value)\s*\)?\s*,|$list)/gx) {
        my $line = 1 + (substr($code, 0, $-[0]) =~ tr/\n//);
        my $found = $& =~ s/\s+/ /gr;
        print "$file:$line: $found\n";
    }
}
