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

# A quote without an end in hidden prose would make the preprocessor lose count of the lines.
sub closed
{
    my ($string) = @_;
    $string =~ s/^"/ / unless $string =~ /^".*"$/s;
    return $string;
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
        my $hidden = 0;
        my $next = sub {
            my ($string, $name, $comment) = @_;
            return $hidden ? closed($string) : $string if defined $string;
            return $name if defined $name;
            $hidden = lc $1 eq 'off' if $comment =~ /translate_(on|off)/i;
            return kept($comment);
        };
        $text =~ s{("(?:\\.|[^"\\\n])*"?)|(\\\S+)|(//[^\n]*|/\*.*?\*/)}{$next->($1, $2, $3)}gse;
    }
    print 'Content-Length: ', length $text, "\n", $text, "\n";
}
