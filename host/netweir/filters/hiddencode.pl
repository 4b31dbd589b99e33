# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
#
# The preprocessor asks for each file with one line, read "NAME", and is given the length of the
# text and the text. The preprocessor keeps comments that begin with the word "verilator" and drops
# all others, so those that mark hidden code get that word in front.
use strict;
use warnings;

binmode STDIN;
binmode STDOUT;
$| = 1;

sub kept
{
    my ($comment) = @_;
    return $comment unless $comment =~ /translate_o(?:n|ff)/i;
    my $breaks = join '', $comment =~ /\\?\r?\n/g;
    $comment =~ s{^/[/*][\s*]*}{};
    $comment =~ s{\*/$}{};
    $comment =~ s{\\?\r?\n}{ }g;
    $comment =~ s{/[/*]|\*/}{ ! }g;
    return "/*verilator $comment*/$breaks";
}

while (my $request = <STDIN>) {
    my ($name) = $request =~ /^read "(.*)"$/ or exit 1;
    my $text = '';
    if (open my $file, '<:raw', $name) {
        local $/;
        $text = <$file> // '';
    }
    if ($text =~ /translate_o/i) {
        # Strings and escaped names may hold what looks like a comment.
        $text =~ s{("(?:\\.|[^"\\\n])*"?|\\\S+)|(//[^\n]*|/\*.*?\*/)}{$1 // kept($2)}gse;
    }
    print 'Content-Length: ', length $text, "\n", $text, "\n";
}
