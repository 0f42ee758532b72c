<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Xml;

/**
 * Gives an XMLReader bytes that come in pieces. It opens names alone before PHP 8.4,
 * so they get one, which means nothing to anybody else.
 *
 * @internal
 */
final class Bytes
{
    private const SCHEME = 'sepa-bytes';

    /** Comments and instructions in a document: the library keeps them all, and banks write none. */
    private const MOST_ASIDES = 10000;

    /** @var array<int, \Iterator<string>> */
    private static array $open = [];

    private static int $last = 0;

    /** @var resource|null that PHP sets */
    public $context;

    private int $number = 0;

    private string $chunk = '';

    private int $at = 0;

    private int $asides = 0;

    /**
     * @param \Iterator<string> $chunks
     * @return \XMLReader|null that stands before the document; null if it is none
     */
    public static function reader(\Iterator $chunks): ?\XMLReader
    {
        if (!in_array(self::SCHEME, stream_get_wrappers(), true)) {
            // No URL, since many servers switch those off.
            stream_wrapper_register(self::SCHEME, self::class);
        }
        self::$open[++self::$last] = $chunks;
        $reader = new \XMLReader();
        $options = LIBXML_NONET | LIBXML_NOBLANKS | LIBXML_COMPACT | LIBXML_NOERROR | LIBXML_NOWARNING;

        return @$reader->open(self::SCHEME . '://' . self::$last, null, $options) ? $reader : null;
    }

    /** Whether that is the name of bytes that a reader got here. */
    public static function isOurs(string $name): bool
    {
        return strncmp($name, self::SCHEME . ':', strlen(self::SCHEME) + 1) === 0;
    }

    // phpcs:disable PSR1.Methods.CamelCapsMethodName -- PHP gives these names

    public function stream_open(string $path): bool
    {
        $this->number = (int) substr($path, strlen(self::SCHEME) + 3);

        return isset(self::$open[$this->number]);
    }

    public function stream_read(int $count): string
    {
        $chunks = self::$open[$this->number];
        while ($this->at === strlen($this->chunk) && $chunks->valid()) {
            $this->chunk = $chunks->current();
            $this->at = 0;
            $this->asides += substr_count($this->chunk, '<!') + substr_count($this->chunk, '<?');
            if ($this->asides > self::MOST_ASIDES) {
                // The document ends here, which the library finds to be a fault.
                $this->chunk = '';

                return '';
            }
            $chunks->next();
        }
        $bytes = substr($this->chunk, $this->at, $count);
        $this->at += strlen($bytes);

        return $bytes;
    }

    public function stream_eof(): bool
    {
        return $this->asides > self::MOST_ASIDES
            || ($this->at === strlen($this->chunk) && !self::$open[$this->number]->valid());
    }

    public function stream_close(): void
    {
        unset(self::$open[$this->number]);
    }

    /** @return array<string, int> */
    public function stream_stat(): array
    {
        return [];
    }

    /** @return array<string, int> */
    public function url_stat(): array
    {
        return ['mode' => 0100400];
    }
}
