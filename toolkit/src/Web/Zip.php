<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

/** A ZIP archive in memory: the extension for it writes to the disk. */
final class Zip
{
    /** Names are in UTF-8. */
    private const FLAGS = 0x800;

    private const DEFLATE = 8;

    private const VERSION = 20;

    /** @param array<string, string> $contents by name, below 4 GB together */
    public static function of(array $contents): string
    {
        $files = $directory = '';
        // Day and time as DOS has them, from 1980, to two seconds.
        [$year, $month, $day, $hour, $minute, $second] = array_map('intval', explode(' ', date('Y m d H i s')));
        $time = pack('vv', $hour << 11 | $minute << 5 | $second >> 1, $year - 1980 << 9 | $month << 5 | $day);
        foreach ($contents as $name => $content) {
            $packed = (string) gzdeflate($content);
            $head = pack('vvv', self::VERSION, self::FLAGS, self::DEFLATE) . $time
                . pack('VVVvv', crc32($content), strlen($packed), strlen($content), strlen($name), 0);
            $directory .= "PK\x01\x02" . pack('v', self::VERSION) . $head
                . pack('vvvVV', 0, 0, 0, 0, strlen($files)) . $name;
            $files .= "PK\x03\x04$head$name$packed";
        }
        $count = count($contents);

        $end = pack('vvvvVVv', 0, 0, $count, $count, strlen($directory), strlen($files), 0);

        return "$files{$directory}PK\x05\x06$end";
    }
}
